#include "check/Values.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <vector>

#include "check/Decoder.h"
#include "check/Suggestion.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::ValueKind;
using zel::util::StringUtil;

/// W3C "The 'view-mode' Media Feature".
constexpr std::string_view VIEW_MODES[] = {"windowed", "floating", "fullscreen", "maximized",
                                           "minimized"};

/// Whether a text looks like a language tag (BCP 47): a language of two or three letters, or "i" or
/// "x", and further parts. Longer languages are allowed, but none is registered.
bool isLanguageTag(const std::string& text) {
  const std::vector<std::string> parts = StringUtil::split(text, '-');
  const std::string& language = parts.empty() ? text : parts.front();
  const bool isLanguage = language == "i" || language == "x" ||
                          ((language.size() == 2 || language.size() == 3) &&
                           std::all_of(language.begin(), language.end(), util::ascii::isLetter));
  return isLanguage && text.back() != '-' &&
         std::all_of(parts.begin(), parts.end(), [](const std::string& part) {
           return !part.empty() && part.size() <= 8 &&
                  std::all_of(part.begin(), part.end(), util::ascii::isLetterOrDigit);
         });
}

std::optional<Advice> adviceOnLanguage(const std::string& value) {
  // An empty language is none, and "*" is another mistake.
  if (value.empty() || value == "*" || isLanguageTag(value)) {
    return std::nullopt;
  }
  std::string meant = value;
  std::replace(meant.begin(), meant.end(), '_', '-');
  return Advice{"A language tag such as \"en\" or \"en-US\" is expected; it is kept as written.",
                isLanguageTag(meant) ? meant : "", true};
}

std::optional<Advice> adviceOnKeywords(const std::string& value) {
  if (value.find(',') != std::string::npos) {
    std::string meant = value;
    std::replace(meant.begin(), meant.end(), ',', ' ');
    return Advice{"Separate keywords by blanks, not by commas; they are kept as written.",
                  StringUtil::squeezeAndTrim(meant)};
  }
  const std::vector<std::string> keywords = StringUtil::split(value, ' ');
  for (const std::string& keyword : keywords) {
    if (std::find(std::begin(VIEW_MODES), std::end(VIEW_MODES), keyword) == std::end(VIEW_MODES)) {
      Suggestion suggestion(keyword);
      for (const std::string_view mode : VIEW_MODES) {
        suggestion.consider(mode);
      }
      return Advice{"Unknown view mode \"" + keyword + "\"; it is kept as written.",
                    std::string(suggestion.get())};
    }
  }
  std::set<std::string_view> seen;
  for (const std::string& keyword : keywords) {
    if (!seen.insert(keyword).second) {
      return Advice{"The keyword \"" + keyword + "\" is repeated; the first one counts.", ""};
    }
  }
  return std::nullopt;
}

std::optional<Advice> adviceOnPath(const std::string& value) {
  const std::size_t scheme = value.find("://");
  const bool isAddress =
      scheme != std::string::npos && scheme > 0 &&
      std::all_of(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(scheme),
                  util::ascii::isLetterOrDigit);
  return isAddress
             ? std::optional(Advice{
                   "An address instead of a path within the package; it is kept as written.", ""})
             : std::nullopt;
}

}  // namespace

std::optional<Advice> adviceOnValue(ValueKind kind, const std::string& value) {
  switch (kind) {
    case ValueKind::LANGUAGE:
      return adviceOnLanguage(value);
    case ValueKind::KEYWORDS:
      return adviceOnKeywords(value);
    case ValueKind::PATH:
      return adviceOnPath(value);
    case ValueKind::ENCODING:
      return value.empty() || isKnownEncoding(value)
                 ? std::nullopt
                 : std::optional(Advice{"Unknown encoding; it is kept as written.", ""});
    default:
      return std::nullopt;
  }
}

}  // namespace orvane::nimbrel::check
