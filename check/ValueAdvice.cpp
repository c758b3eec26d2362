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
#include "check/Suggestions.h"
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

util::Option<IRI> parse(const std::string& text) {
  util::Option<IRI> iri;
  if (!util::IRIParser().tryParse(text.c_str(), iri)) {
    iri.reset();
  }
  return iri;
}

/// Scheme, host and port, if the parser takes them.
std::string originOf(const IRI& iri) {
  const std::string scheme = util::ascii::lowerCased(iri.scheme);
  const bool hasPort = iri.port >= 0 || scheme == "http" || scheme == "https";
  std::string ascii;
  if (iri.hasUserInfo || iri.host.empty() || !hasPort ||
      !util::IDNConverter().tryConvertToASCII(iri.host.c_str(), ascii)) {
    return {};
  }
  return scheme + std::string(SCHEME_END) + iri.host +
         (iri.port >= 0 ? ":" + std::to_string(iri.port) : "");
}

/// The origin in an address, whatever its slashes and its scheme, which may be missing. It is
/// certain unless the scheme is a guess, or what stands behind may be a network or a port.
Suggestion meantOrigin(std::string address) {
  std::replace(address.begin(), address.end(), '\\', '/');
  std::size_t scheme = address.find(":/");
  const bool isGuess = scheme == std::string::npos;
  if (isGuess) {
    scheme = 5;
    address.insert(0, "https://");
  } else {
    address.replace(scheme, address.find_first_not_of('/', scheme + 1) - scheme, SCHEME_END);
  }
  const std::size_t end = address.find_first_of("/?#", scheme + SCHEME_END.size());
  const std::string rest = address.substr(std::min(end, address.size()));
  const util::Option<IRI> parsed = parse(address);
  if (!parsed) {
    return {};
  }
  IRI iri = parsed.get();
  if (isGuess && (iri.host.find('.') == std::string::npos || isDigit(iri.host.back()))) {
    if (iri.port < 0 && iri.host.find('.') == std::string::npos) {
      return {};  // any word
    }
    iri.scheme = "http";
  }
  if (iri.host.substr(0, 2) == "*.") {
    iri.host.erase(0, 2);
  }
  const bool isPath =
      rest.find(':') == std::string::npos &&
      (rest.size() < 2 || rest.find_first_not_of("/0123456789") != std::string::npos);
  return {originOf(iri), !isGuess && isPath};
}

// Values that the parser does not judge.

/// W3C "The 'view-mode' Media Feature".
constexpr std::string_view VIEW_MODES[] = {"windowed", "floating", "fullscreen", "maximized",
                                           "minimized"};

/// What a language was meant to be that is none, but the code of a country, as "jp".
std::optional<Advice> adviceOnCode(const std::string& tag) {
  // The library has to look for the first and no longer has the others, which users know.
  constexpr std::string_view KNOWN[] = {"en", "bh", "mo", "sh"};
  const std::string language = tag.substr(0, tag.find('-'));
  const std::string code = util::ascii::lowerCased(language);
  if (code.size() != 2 || std::find(std::begin(KNOWN), std::end(KNOWN), code) != std::end(KNOWN) ||
      *uloc_getISO3Language(code.c_str()) != '\0') {
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
    return Advice{'"' + language + "\" is no language."};
  }
  return Advice{'"' + language + "\" is a country, not a language.",
                {meant + tag.substr(language.size())}};
}

std::optional<Advice> adviceOnLanguage(const std::string& value) {
  // An empty language is none, and "*" is another mistake.
  if (value.empty() || value == "*") {
    return std::nullopt;
  }
  if (isLanguageTag(value)) {
    return adviceOnCode(value);
  }
  std::string meant = asTyped(value);
  std::replace(meant.begin(), meant.end(), '_', '-');
  const std::vector<std::string> parts = StringUtil::split(meant, '-');
  // "en_us_x" is no tag, and "x" was not meant to begin another part.
  const bool isCertain = std::all_of(parts.begin(), parts.end(),
                                     [](const std::string& part) { return part.size() > 1; });
  return Advice{"No user has this language; write a tag such as \"en\" or \"en-US\".",
                isLanguageTag(meant) ? Suggestion{meant, isCertain} : Suggestion(), true};
}

std::optional<Advice> adviceOnKeywords(std::string value) {
  const bool hasComma = value.find(',') != std::string::npos;
  std::replace(value.begin(), value.end(), ',', ' ');
  std::string unknown;
  std::string repeated;
  std::set<std::string> seen;
  Suggestion meant = {"", true};
  for (const std::string& keyword : StringUtil::split(StringUtil::squeezeAndTrim(value), ' ')) {
    const Suggestion mode = nearestName(keyword, {std::begin(VIEW_MODES), std::end(VIEW_MODES)});
    if (mode.text != keyword && unknown.empty()) {
      unknown = keyword;
    }
    if (!seen.insert(keyword).second) {
      repeated = keyword;
    }
    meant.text += (meant.text.empty() ? "" : " ") + (mode.text.empty() ? keyword : mode.text);
    meant.isCertain = meant.isCertain && mode.isCertain && repeated.empty();
  }
  if (hasComma) {
    return Advice{"Separate view modes by blanks, not by commas.", meant, true};
  }
  if (!unknown.empty()) {
    return Advice{"There is no view mode \"" + unknown +
                      "\"; there are windowed, floating, fullscreen, maximized and minimized.",
                  meant.text == value ? Suggestion() : meant, true};
  }
  return repeated.empty() ? std::nullopt
                          : std::optional(Advice{"The view mode \"" + repeated +
                                                 "\" is repeated; the first one counts."});
}

std::optional<Advice> adviceOnPath(std::string value) {
  const std::size_t scheme = value.find(SCHEME_END);
  const bool isAddress =
      scheme != std::string::npos && scheme > 0 &&
      std::all_of(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(scheme),
                  util::ascii::isLetterOrDigit);
  if (isAddress) {
    return Advice{"An address; write the path of a file in the package."};
  }
  if (value.find('\\') == std::string::npos) {
    return std::nullopt;
  }
  std::replace(value.begin(), value.end(), '\\', '/');
  const bool isRelative = value.front() != '/' && value.find(':') == std::string::npos;
  return Advice{"Write \"/\" between folders; \"\\\" is part of a name.",
                {isRelative ? value : "", isRelative},
                true};
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

Suggestion suggestedNumber(ValueKind kind, std::string_view text) {
  constexpr std::string_view UNIT = "px";
  std::string number = asTyped(text);
  const std::size_t unit = number.size() - std::min(UNIT.size(), number.size());
  if ((kind == ValueKind::SIZE || kind == ValueKind::INTEGER) &&
      util::ascii::lowerCased(number.substr(unit)) == UNIT) {
    number = StringUtil::trimmed(std::string_view(number).substr(0, unit));
  }
  // Zero may be too small.
  return isWholeNumber(kind, number) && usedNumber(kind, number) != "0" ? Suggestion{number, true}
                                                                        : Suggestion();
}

Advice adviceOnOrigin(const std::string& origin) {
  const auto has = [&](std::string_view text) { return origin.find(text) != std::string::npos; };
  const std::string typed = asTyped(origin);
  if (typed.find_first_not_of("[]{}()\"' *") == std::string::npos &&
      std::count(typed.begin(), typed.end(), '*') == 1) {
    return {"Write \"*\" alone", {"*", true}};
  }
  const util::Option<IRI> parsed = parse(origin);
  const IRI iri = parsed ? parsed.get() : IRI();
  const Suggestion meant = meantOrigin(typed);
  if (origin.substr(0, 2) == "*." || iri.host.substr(0, 2) == "*.") {
    return {"Write subdomains=\"true\" instead of a wildcard", meant};
  }
  if (has("\\")) {
    return {"Write \"/\" for \"\\\"", meant};
  }
  if (has(" ") || iri.host.find_first_of(",;") != std::string::npos ||
      origin.find(SCHEME_END) != origin.rfind(SCHEME_END)) {
    return {"Write an element for each origin"};
  }
  if (!parsed) {
    const std::size_t colon = origin.rfind(':');
    const bool isPortWrong =
        has(SCHEME_END) && colon > origin.find(SCHEME_END) && parse(origin.substr(0, colon));
    return {isPortWrong ? "The port must be a number up to 65535"
                        : "Must be \"*\", or scheme, host and port",
            meant};
  }
  if (iri.host.empty()) {
    return {meant.text.empty() ? "An origin needs a host"
            : has(":/")        ? "Write \"//\" behind \"" + iri.scheme + ":\""
                        : '"' + iri.scheme + ":\" is read as a scheme; write scheme, host and port",
            meant};
  }
  const std::string scheme = util::ascii::lowerCased(iri.scheme);
  return {iri.hasUserInfo || iri.hasPath || iri.hasQuery || iri.hasFragment
              ? "Only scheme, host and port are allowed, without a final slash"
          : iri.port < 0 && scheme != iri.scheme ? "The scheme must be in lower case"
          : iri.port < 0 && scheme != "http" && scheme != "https"
              ? "A port is needed, unless the scheme is \"http\" or \"https\""
              : "The host is not a valid domain name",
          meant};
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
                 : std::optional(Advice{"There is no encoding of this name; write \"utf-8\"."});
    default:
      return std::nullopt;
  }
}

}  // namespace orvane::nimbrel::check
