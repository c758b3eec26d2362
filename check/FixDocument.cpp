#include "check/FixDocument.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "check/Check.h"
#include "check/Decoder.h"
#include "check/Kind.h"

namespace orvane::nimbrel::check {
namespace {

using config::FindingCode;
using util::XmlNode;

/// The most that a document is checked. Names bring attributes to light, these keys, these values,
/// and what of it is not as good as it seemed is undone: a handful of times.
constexpr int MAX_ROUNDS = 24;

/// What is wrong with which element. Elements keep their numbers, as no fix adds or removes one.
using Fault = std::tuple<FindingCode, std::uint32_t, std::string_view>;

Fault faultOf(const Diagnostic& finding) noexcept {
  return {finding.code, finding.elementNumber, finding.attribute};
}

std::set<Fault> faultsOf(const Report& report) {
  std::set<Fault> faults;
  for (const Diagnostic& finding : report.findings()) {
    faults.insert(faultOf(finding));
  }
  return faults;
}

bool isError(const Diagnostic& finding) noexcept {
  return kindOf(finding.code).level == Level::ERROR;
}

bool hasError(const Report& report) noexcept {
  return std::any_of(report.findings().begin(), report.findings().end(), isError);
}

/// What a fix must not bring about.
bool isHarm(FindingCode code) noexcept {
  constexpr FindingCode HARM[] = {FindingCode::REPEATED, FindingCode::UNUSED_SETTING,
                                  FindingCode::OTHER_LANGUAGE, FindingCode::UNUSED_LANGUAGE,
                                  FindingCode::NOT_AN_IRI};
  return std::find(std::begin(HARM), std::end(HARM), code) != std::end(HARM);
}

/// What fixes must not be made because of what came of them.
struct Excluded {
  std::set<std::uint32_t> elements;  ///< by number
  bool namespaces = false;
};

/// Compares what is found before and after some fixes. Adds to `excluded` what has to go; false
/// when nothing has.
class Review {
 public:
  Review(const Report& before, const std::vector<Fix>& fixes)
      : faults_(faultsOf(before)), wasRejected_(hasError(before)) {
    for (const Fix& fix : fixes) {
      fixed_.insert(faultOf(*fix.finding));
      if (!fix.isNamespace) {
        touched_.insert(fix.finding->elementNumber);
        const FindingCode code = fix.finding->code;
        if (code == FindingCode::UNKNOWN_ELEMENT || code == FindingCode::UNEXPECTED_CHILD) {
          renamed_.insert(fix.finding->elementNumber);
        }
      }
    }
  }

  [[nodiscard]] bool exclude(const Report& after, Excluded& excluded) {
    bool isAnyHarmful = false;
    for (const Diagnostic& finding : after.findings()) {
      isAnyHarmful |= judge(after, finding, excluded);
    }
    return isAnyHarmful;
  }

 private:
  bool judge(const Report& after, const Diagnostic& finding, Excluded& excluded) {
    if (finding.code == FindingCode::DOCUMENT_REJECTED && finding.element == nullptr) {
      return excluded.namespaces = true;  // an attribute stands twice in a tag
    }
    const Fault fault = faultOf(finding);
    if (fixed_.count(fault) != 0) {
      return excludeElement(finding.elementNumber, excluded);
    }
    if (faults_.count(fault) != 0) {
      return false;
    }
    if (isError(finding) && !wasRejected_) {
      return excludeCause(after, finding, excluded);
    }
    return isHarm(finding.code) && excludeEither(after, finding, excluded);
  }

  /// Of two elements in each other's way those whose names were fixed; else those with any fix.
  bool excludeEither(const Report& after, const Diagnostic& finding, Excluded& excluded) const {
    const std::uint32_t numbers[] = {finding.elementNumber, after.numberOf(finding.other)};
    bool isAny = false;
    for (const bool isRenamed : {true, false}) {
      for (const std::uint32_t number : numbers) {
        isAny |= (!isRenamed || renamed_.count(number) != 0) && excludeElement(number, excluded);
      }
      if (isAny) {
        break;
      }
    }
    return isAny;
  }

  bool excludeElement(std::uint32_t number, Excluded& excluded) const {
    return touched_.count(number) != 0 && excluded.elements.insert(number).second;
  }

  /// The nearest fix around an error, else those of namespaces.
  bool excludeCause(const Report& after, const Diagnostic& error, Excluded& excluded) const {
    for (const XmlNode* element = error.element; element != nullptr; element = element->parent()) {
      if (touched_.count(after.numberOf(element)) != 0) {
        excluded.elements.insert(after.numberOf(element));
        return true;
      }
    }
    return excluded.namespaces = true;
  }

  std::set<Fault> faults_;
  bool wasRejected_;
  std::set<Fault> fixed_;
  std::set<std::uint32_t> touched_;  // elements, by number
  std::set<std::uint32_t> renamed_;
};

std::vector<Fix> allowedFixes(const Report& report, const Excluded& excluded) {
  std::vector<Fix> fixes = fixesOf(report);
  fixes.erase(std::remove_if(fixes.begin(), fixes.end(),
                             [&](const Fix& fix) {
                               return fix.isNamespace
                                          ? excluded.namespaces
                                          : excluded.elements.count(fix.finding->elementNumber) !=
                                                0;
                             }),
              fixes.end());
  return fixes;
}

/// The edits of all fixes in the order of the document, each once.
std::vector<Edit> editsOf(const std::vector<Fix>& fixes) {
  std::vector<Edit> edits;
  for (const Fix& fix : fixes) {
    edits.insert(edits.end(), fix.edits.begin(), fix.edits.end());
  }
  const auto key = [](const Edit& edit) {
    return std::tie(edit.span.begin, edit.span.end, edit.text);
  };
  std::sort(edits.begin(), edits.end(),
            [&](const Edit& left, const Edit& right) { return key(left) < key(right); });
  edits.erase(
      std::unique(edits.begin(), edits.end(),
                  [&](const Edit& left, const Edit& right) { return key(left) == key(right); }),
      edits.end());
  return edits;
}

}  // namespace

std::optional<std::string> withFixes(const Report& report, const std::vector<Fix>& fixes) {
  const std::string& document = report.document();
  const std::optional<std::string> encoding = encodingOf(document);
  if (!encoding) {
    return std::nullopt;
  }
  const SourceText& source = report.source();
  std::string bytes;
  std::string text;  // in UTF-8
  std::size_t byte = 0;
  std::size_t at = 0;
  for (const Edit& edit : editsOf(fixes)) {
    const std::optional<std::string> replacement = encode(edit.text, *encoding);
    if (!replacement || edit.span.begin < at) {
      return std::nullopt;
    }
    const std::size_t begin = source.positionOf(edit.span.begin).byte;
    bytes.append(document, byte, begin - byte).append(*replacement);
    text.append(source.text(), at, edit.span.begin - at).append(edit.text);
    byte = source.positionOf(edit.span.end).byte;
    at = edit.span.end;
  }
  bytes.append(document, byte);
  text.append(source.text(), at);
  // In some encodings a byte means what the one before it says.
  return SourceText(bytes).text() == text ? std::optional(std::move(bytes)) : std::nullopt;
}

FixedDocument fixDocument(std::string document,
                          const std::optional<std::vector<std::string>>& locales,
                          std::uint32_t logMask,
                          const std::optional<std::vector<std::string>>& package) {
  FixedDocument fixed = {checkDocument(std::move(document), locales, logMask, package)};
  Excluded excluded;
  for (int round = 0; round < MAX_ROUNDS; ++round) {
    const std::vector<Fix> fixes = allowedFixes(*fixed.report, excluded);
    std::optional<std::string> next =
        fixes.empty() ? std::nullopt : withFixes(*fixed.report, fixes);
    if (!next) {
      break;
    }
    std::unique_ptr<const Report> report =
        checkDocument(std::move(*next), locales, logMask, package);
    if (!Review(*fixed.report, fixes).exclude(*report, excluded)) {
      fixed.report = std::move(report);
      fixed.count += fixes.size();
      excluded = {};  // what was harmful once may be right now, as it would be in another run
    }
  }
  return fixed;
}

}  // namespace orvane::nimbrel::check
