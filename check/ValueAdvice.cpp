#include "check/ValueAdvice.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <locale>
#include <set>
#include <sstream>
#include <system_error>
#include <vector>

#include "check/Decoder.h"
#include "check/NearestName.h"
#include "util/Ascii.h"
#include "util/IDNConverter.h"
#include "util/IRI.h"
#include "util/IRIParser.h"
#include "util/Option.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::ValueKind;
using util::IRI;
using util::ascii::isDigit;
using zel::util::StringUtil;

// Numbers.

bool isUnsigned(ValueKind kind) noexcept {
  return kind == ValueKind::NUMBER || kind == ValueKind::SIZE;
}

/// What a stream reads, which is how the parser does it.
template <typename Number>
std::string extracted(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  Number number = 0;
  stream >> number;
  char digits[32];  // room for any number
  const auto result = std::to_chars(std::begin(digits), std::end(digits), number);
  return {std::begin(digits), result.ptr};
}

template <typename Number>
bool isWhole(std::string_view text) noexcept {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

// Origins.

constexpr std::string_view SCHEME_END = "://";
constexpr unsigned int MAX_PORT = 65535;

util::Option<IRI> parse(const std::string& text) {
  util::Option<IRI> iri;
  if (!util::IRIParser().tryParse(text.c_str(), iri)) {
    iri.reset();
  }
  return iri;
}

bool hasMore(const IRI& iri) noexcept {
  return iri.hasUserInfo || iri.hasPath || iri.hasQuery || iri.hasFragment;
}

std::string schemeOf(const IRI& iri) {
  return util::ascii::lowerCased(std::string(iri.scheme));
}

/// Scheme, host and port, if the parser takes them.
std::string originOf(const IRI& iri) {
  const std::string scheme = schemeOf(iri);
  const bool hasPort = iri.port >= 0 || scheme == "http" || scheme == "https";
  std::string ascii;
  if (iri.hasUserInfo || !hasPort ||
      !util::IDNConverter().tryConvertToASCII(iri.host.c_str(), ascii)) {
    return {};
  }
  return scheme + std::string(SCHEME_END) + iri.host +
         (iri.port >= 0 ? ":" + std::to_string(iri.port) : "");
}

/// Whether an origin is an IRI but for its port.
bool isPortWrong(const std::string& origin) {
  const std::size_t host = origin.find(SCHEME_END);
  const std::size_t colon = origin.rfind(':');
  if (host == std::string::npos || colon == host) {
    return false;
  }
  const std::string_view port = std::string_view(origin).substr(colon + 1);
  const bool isNumber =
      !port.empty() && port.size() < 6 && std::all_of(port.begin(), port.end(), isDigit);
  return !(isNumber && std::stoul(std::string(port)) <= MAX_PORT) && parse(origin.substr(0, colon));
}

/// What a text without a scheme was meant to be, if it is a host: with a dot, or with a port.
std::string meantByHost(const std::string& origin) {
  const util::Option<IRI> iri = parse("https://" + origin);
  const bool isHost =
      iri && iri.get().hasHost && !hasMore(iri.get()) && !originOf(iri.get()).empty();
  const bool hasDot = origin.find('.') != std::string::npos;
  if (!isHost || (!hasDot && iri.get().port < 0)) {
    return {};
  }
  return (hasDot && !isDigit(iri.get().host.back()) ? "https://" : "http://") + origin;
}

/// What was meant where "\\" or a single "/" stands behind the scheme.
std::string meantBySlashes(std::string origin) {
  std::replace(origin.begin(), origin.end(), '\\', '/');
  const std::size_t scheme = origin.find(":/");
  if (scheme == std::string::npos) {
    return {};
  }
  const std::size_t host = std::min(origin.find_first_not_of('/', scheme + 1), origin.size());
  const util::Option<IRI> iri =
      parse(origin.substr(0, scheme) + std::string(SCHEME_END) + origin.substr(host));
  return iri && !iri.get().host.empty() ? originOf(iri.get()) : "";
}

Advice adviceOnText(const std::string& origin) {
  if (origin.find_first_not_of("[]{}()\"' *") == std::string::npos &&
      std::count(origin.begin(), origin.end(), '*') == 1) {
    return {"Write \"*\" alone", "*"};
  }
  if (origin.find('\\') != std::string::npos) {
    return {"Write \"/\" for \"\\\"", meantBySlashes(origin)};
  }
  if (origin.find(' ') != std::string::npos) {
    return {"Write an element for each origin", ""};
  }
  if (isPortWrong(origin)) {
    return {"The port must be a number up to 65535", ""};
  }
  return {"Must be \"*\", or scheme, host and port", meantByHost(origin)};
}

// Values that the parser does not judge.

/// W3C "The 'view-mode' Media Feature".
constexpr std::string_view VIEW_MODES[] = {"windowed", "floating", "fullscreen", "maximized",
                                           "minimized"};

/// What a language was meant to be that is none, but the code of a country, as "jp".
std::optional<Advice> adviceOnCode(const std::string& tag) {
  constexpr std::string_view FORMER[] = {"bh", "mo", "sh"};  // known to users, not to the library
  const std::string language = tag.substr(0, tag.find('-'));
  const std::string code = util::ascii::lowerCased(language);
  if (code.size() != 2 || *uloc_getISO3Language(code.c_str()) != '\0' ||
      std::find(std::begin(FORMER), std::end(FORMER), code) != std::end(FORMER)) {
    return std::nullopt;
  }
  const std::string country = "und_" + code;
  char likely[ULOC_FULLNAME_CAPACITY] = "";
  UErrorCode error = U_ZERO_ERROR;
  if (*uloc_getISO3Country(country.c_str()) != '\0') {
    uloc_addLikelySubtags(country.c_str(), likely, ULOC_FULLNAME_CAPACITY, &error);
  }
  const std::string meant(likely, std::strcspn(likely, "_"));
  if (U_FAILURE(error) || meant.empty() || meant == "und") {
    return Advice{'"' + language + "\" is no language.", ""};
  }
  return Advice{'"' + language + "\" is a country, not a language.",
                meant + tag.substr(language.size())};
}

std::optional<Advice> adviceOnLanguage(const std::string& value) {
  // An empty language is none, and "*" is another mistake.
  if (value.empty() || value == "*") {
    return std::nullopt;
  }
  if (isLanguageTag(value)) {
    return adviceOnCode(value);
  }
  std::string meant = value;
  std::replace(meant.begin(), meant.end(), '_', '-');
  return Advice{"No user has this language; write a tag such as \"en\" or \"en-US\".",
                isLanguageTag(meant) ? meant : "", true, true};
}

std::optional<Advice> adviceOnKeywords(const std::string& value) {
  if (value.find(',') != std::string::npos) {
    std::string meant = value;
    std::replace(meant.begin(), meant.end(), ',', ' ');
    return Advice{"Separate view modes by blanks, not by commas.",
                  StringUtil::squeezeAndTrim(meant), false, true};
  }
  const std::vector<std::string> keywords = StringUtil::split(value, ' ');
  for (const std::string& keyword : keywords) {
    if (std::find(std::begin(VIEW_MODES), std::end(VIEW_MODES), keyword) == std::end(VIEW_MODES)) {
      NearestName suggestion(keyword, Reach::LIKELY);
      for (const std::string_view mode : VIEW_MODES) {
        suggestion.consider(mode);
      }
      return Advice{"There is no view mode \"" + keyword +
                        "\"; there are windowed, floating, fullscreen, maximized and minimized.",
                    std::string(suggestion.get()), false, true};
    }
  }
  std::set<std::string_view> seen;
  for (const std::string& keyword : keywords) {
    if (!seen.insert(keyword).second) {
      return Advice{"The view mode \"" + keyword + "\" is repeated; the first one counts.", ""};
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
  if (isAddress) {
    return Advice{"An address; write the path of a file in the package.", ""};
  }
  if (value.find('\\') == std::string::npos) {
    return std::nullopt;
  }
  std::string meant = value;
  std::replace(meant.begin(), meant.end(), '\\', '/');
  const bool isRelative = meant.front() != '/' && meant.find(':') == std::string::npos;
  return Advice{"Write \"/\" between folders; \"\\\" is part of a name.", isRelative ? meant : "",
                true, true};
}

}  // namespace

// Longer languages than of three letters are allowed, but none is registered.
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

bool isNumeric(ValueKind kind) noexcept {
  return isUnsigned(kind) || kind == ValueKind::INTEGER || kind == ValueKind::DECIMAL;
}

bool isWholeNumber(ValueKind kind, std::string_view text) {
  if (isUnsigned(kind)) {
    return std::all_of(text.begin(), text.end(), isDigit);
  }
  return kind == ValueKind::INTEGER ? isWhole<int>(text) : isWhole<double>(text);
}

std::string usedNumber(ValueKind kind, const std::string& text) {
  if (!isUnsigned(kind)) {
    return kind == ValueKind::INTEGER ? extracted<int>(text) : extracted<double>(text);
  }
  // White space between digits does not count.
  std::string digits;
  for (const char c : text) {
    if (isDigit(c)) {
      digits += c;
    } else if (!StringUtil::isSpace(c)) {
      break;
    }
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  return digits.empty() ? "0" : digits;
}

Advice adviceOnOrigin(const std::string& origin) {
  if (origin.substr(0, 2) == "*.") {
    return adviceOnOrigin("https://" + origin);
  }
  const util::Option<IRI> parsed = parse(origin);
  if (!parsed) {
    return adviceOnText(origin);
  }
  const IRI& iri = parsed.get();
  if (!iri.hasHost || iri.host.empty()) {
    if (const std::string meant = meantBySlashes(origin); !meant.empty()) {
      return {"Write \"//\" behind \"" + iri.scheme + ":\"", meant};
    }
    const Advice advice = adviceOnText(origin);
    return {advice.suggestion.empty()
                ? "An origin needs a host"
                : '"' + iri.scheme + ":\" is read as a scheme; write scheme, host and port",
            advice.suggestion};
  }
  if (iri.host.substr(0, 2) == "*.") {
    return {"Write subdomains=\"true\" instead of a wildcard",
            iri.scheme + std::string(SCHEME_END) + iri.host.substr(2) +
                (iri.port >= 0 ? ":" + std::to_string(iri.port) : "")};
  }
  if (iri.host.find_first_of(",;") != std::string::npos ||
      origin.find(SCHEME_END) != origin.rfind(SCHEME_END)) {
    return {"Write an element for each origin", ""};
  }
  if (hasMore(iri)) {
    return {"Only scheme, host and port are allowed, without a final slash", originOf(iri), true};
  }
  if (iri.port < 0 && schemeOf(iri) != iri.scheme) {
    return {"The scheme must be in lower case", originOf(iri), true};
  }
  if (iri.port < 0 && iri.scheme != "http" && iri.scheme != "https") {
    return {"A port is needed, unless the scheme is \"http\" or \"https\"", ""};
  }
  return {"The host is not a valid domain name", ""};
}

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
                 : std::optional(Advice{"There is no encoding of this name; write \"utf-8\".", ""});
    default:
      return std::nullopt;
  }
}

}  // namespace orvane::nimbrel::check
