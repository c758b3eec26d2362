#pragma once

#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// The user's languages as BCP 47 tags, best first, as the environment names them: LANGUAGE, unless
/// the locale (LC_ALL, LC_MESSAGES, LANG) is "C" or "POSIX", for which there are none; else that
/// locale.
///
/// Each is followed by its shorter forms and, since documents are matched byte for byte, by its
/// lower-case form: "de_AT.UTF-8" gives "de-AT", "de-at", "de".
[[nodiscard]] std::vector<std::string> userLocales();

}  // namespace orvane::nimbrel::tools
