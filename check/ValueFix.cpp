#include "check/ValueFix.h"

#include <algorithm>

#include "check/NearestName.h"
#include "check/Suggestions.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::ValueKind;
using zel::util::StringUtil;

constexpr std::string_view SPACE = " \t\r\n";

/// A value as it is written.
struct Written {
  std::string_view text;  // of the document
  Span whole;
  Span core;  // without white space around it
  char quote;

  Written(std::string_view document, Span value) noexcept
      : text(document), whole(value), core(value), quote(document[value.begin - 1]) {
    while (core.begin < core.end && isSpace(text[core.begin])) {
      ++core.begin;
    }
    while (core.end > core.begin && isSpace(text[core.end - 1])) {
      --core.end;
    }
  }

  static bool isSpace(char c) noexcept { return SPACE.find(c) != std::string_view::npos; }
  [[nodiscard]] std::string_view at(Span span) const noexcept {
    return text.substr(span.begin, span.end - span.begin);
  }
  /// Whether the value says what is written, without references.
  [[nodiscard]] bool isPlain() const noexcept {
    return at(whole).find('&') == std::string_view::npos;
  }
};

std::vector<Edit> replaced(const Written& written, Span span, std::string_view meant) {
  const std::string_view now = written.at(span);
  // What spans lines was laid out by its author.
  if (meant.empty() || meant.find('\n') != std::string_view::npos ||
      now.find_first_of("\r\n") != std::string_view::npos || now == meant) {
    return {};
  }
  return {{span, escapedValue(meant, written.quote)}};
}

/// "480px": sizes are in pixels, so the unit says nothing.
std::vector<Edit> withoutUnit(const Diagnostic& finding, const Written& written) {
  constexpr std::string_view UNIT = "px";
  const ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  const std::string_view value = written.at(written.core);
  if ((kind != ValueKind::SIZE && kind != ValueKind::INTEGER) || !written.isPlain() ||
      value.size() <= UNIT.size()) {
    return {};
  }
  const std::string_view number = StringUtil::trimmed(value.substr(0, value.size() - UNIT.size()));
  const bool isSize =
      looksLike(value.substr(value.size() - UNIT.size()), UNIT) && isWholeNumber(kind, number);
  return isSize ? replaced(written, written.core, number) : std::vector<Edit>();
}

/// Each keyword by itself. Nothing unless all are known then.
std::vector<Edit> keywords(const Written& written) {
  std::vector<Edit> edits;
  std::string after;
  if (!written.isPlain()) {
    return {};
  }
  for (std::size_t at = written.core.begin; at < written.core.end;) {
    if (written.text[at] == ',') {
      // A comma with a blank beside it is a letter too many.
      const bool isBesideSpace =
          Written::isSpace(written.text[at - 1]) || Written::isSpace(written.text[at + 1]);
      edits.push_back({{at, at + 1}, isBesideSpace ? "" : " "});
      ++at;
    }
    const std::size_t end = std::min(written.text.find_first_of(", \t\r\n", at), written.core.end);
    const std::string word(written.at({at, end}));
    const auto advice = adviceOnValue(ValueKind::KEYWORDS, word);
    const bool isMisspelt = advice && !advice->suggestion.empty();
    if (isMisspelt) {
      edits.push_back({{at, end}, advice->suggestion});
    }
    after += ' ' + (isMisspelt ? advice->suggestion : word);
    at = end;
    while (at < written.core.end && Written::isSpace(written.text[at])) {
      ++at;
    }
  }
  return adviceOnValue(ValueKind::KEYWORDS, StringUtil::squeezeAndTrim(after)) ? std::vector<Edit>()
                                                                               : edits;
}

bool isEachLonger(const std::vector<std::string>& parts, std::size_t size) noexcept {
  return std::all_of(parts.begin(), parts.end(),
                     [&](const std::string& part) { return part.size() > size; });
}

std::vector<Edit> suspicious(const Diagnostic& finding, const Written& written) {
  const ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  if (kind == ValueKind::KEYWORDS) {
    return keywords(written);
  }
  const auto advice = adviceOnValue(kind, StringUtil::squeezeAndTrim(finding.value));
  // "en-us-x" is no tag, and "x" was not meant to begin another part.
  const bool isWhole = advice && (kind != ValueKind::LANGUAGE ||
                                  isEachLonger(StringUtil::split(advice->suggestion, '-'), 1));
  return isWhole && advice->isCertain ? replaced(written, written.core, advice->suggestion)
                                      : std::vector<Edit>();
}

std::vector<Edit> origin(const Diagnostic& finding, const Written& written) {
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  const Advice advice = adviceOnOrigin(value);
  // What is no path, but a network ("/8") or a port in a wrong place, was meant to count.
  const std::size_t host = value.find("://") + 3;
  const std::string rest = value.substr(std::min(value.find_first_of("/?#", host), value.size()));
  const bool isPath =
      rest.find(':') == std::string::npos &&
      (rest.size() < 2 || rest.find_first_not_of("/0123456789") != std::string::npos);
  return advice.isCertain && isPath ? replaced(written, written.core, advice.suggestion)
                                    : std::vector<Edit>();
}

/// A blank in a link; in the name of a feature it may separate two, and no identity is guessed.
std::vector<Edit> iri(const Diagnostic& finding, const Written& written) {
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  return finding.attribute == "href" && value == written.at(written.core)
             ? replaced(written, written.core, suggestionFor(finding))
             : std::vector<Edit>();
}

std::vector<Edit> word(const Diagnostic& finding, const Written& written) {
  constexpr std::string_view SWITCHES[] = {"true", "false", "yes", "no"};
  const std::string meant = suggestionFor(finding);
  const bool isOfSwitch =
      finding.attribute != "dir" &&
      std::find(std::begin(SWITCHES), std::end(SWITCHES), meant) != std::end(SWITCHES);
  // Another word is meant with certainty if it looks the same.
  return isOfSwitch || looksLike(StringUtil::trimmed(finding.value), meant)
             // White space around a direction counts.
             ? replaced(written, finding.attribute == "dir" ? written.whole : written.core, meant)
             : std::vector<Edit>();
}

}  // namespace

std::string escapedValue(std::string_view text, char quote) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == quote) {
      escaped += quote == '"' ? "&quot;" : "&apos;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::vector<Edit> fixesOfValue(const Diagnostic& finding, std::string_view text, Span value) {
  const Written written(text, value);
  switch (finding.code) {
    case FindingCode::PARTIAL_NUMBER:
      return withoutUnit(finding, written);
    case FindingCode::INVALID_VALUE:
    case FindingCode::SUSPICIOUS_VALUE:
      return suspicious(finding, written);
    case FindingCode::NOT_AN_ORIGIN:
      return origin(finding, written);
    case FindingCode::NOT_AN_IRI:
      return iri(finding, written);
    case FindingCode::UNKNOWN_WORD:
      return word(finding, written);
    case FindingCode::UNKNOWN_KEY:
    case FindingCode::NOT_A_BOOLEAN:
      return replaced(written, written.core, suggestionFor(finding));
    default:
      return {};
  }
}

}  // namespace orvane::nimbrel::check
