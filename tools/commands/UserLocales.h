#pragma once

#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// Language tags (BCP 47) or names of locales, best first, as the tags that documents are matched
/// by. Each is followed by its shorter forms and, since that is done byte for byte, by its
/// lower-case form: "de_AT.UTF-8" and "de-AT" give "de-AT", "de-at", "de".
[[nodiscard]] std::vector<std::string> tagsOf(const std::vector<std::string>& names);

/// The same of the user's languages, as the environment names them: LANGUAGE, unless the locale
/// (LC_ALL, LC_MESSAGES, LANG) is "C" or "POSIX", for which there are none; else that locale.
[[nodiscard]] std::vector<std::string> userLocales();

}  // namespace orvane::nimbrel::tools
