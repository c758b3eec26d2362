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

std::vector<Edit> suspicious(const Diagnostic& finding, const Written& written) {
  const ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  if (kind == ValueKind::KEYWORDS) {
    return keywords(written);
  }
  const auto advice = adviceOnValue(kind, StringUtil::squeezeAndTrim(finding.value));
  return advice && advice->isCertain ? replaced(written, written.core, advice->suggestion)
                                     : std::vector<Edit>();
}

std::vector<Edit> origin(const Diagnostic& finding, const Written& written) {
  const Advice advice = adviceOnOrigin(StringUtil::squeezeAndTrim(finding.value));
  return advice.isCertain ? replaced(written, written.core, advice.suggestion)
                          : std::vector<Edit>();
}

/// A blank in a link or an identifier; in the name of a feature it may separate two.
std::vector<Edit> iri(const Diagnostic& finding, const Written& written) {
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  return finding.attribute != "name" && value == written.at(written.core)
             ? replaced(written, written.core, suggestionFor(finding))
             : std::vector<Edit>();
}

std::vector<Edit> word(const Diagnostic& finding, const Written& written) {
  const std::string meant = suggestionFor(finding);
  if (finding.attribute != "dir") {
    return replaced(written, written.core, meant);
  }
  // White space around it counts. Of three letters a wrong one is too many to be certain.
  return looksLike(StringUtil::trimmed(finding.value), meant)
             ? replaced(written, written.whole, meant)
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
