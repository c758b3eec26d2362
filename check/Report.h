#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Diagnostic.h"
#include "check/Markup.h"
#include "check/SourceText.h"
#include "util/XmlDocument.h"

namespace orvane::nimbrel::check {

/// Where something is. A line or column of 0 is not known.
struct Place {
  Position begin;
  Position end;  ///< behind it
};

/// What is found in one document, in the order of the document. It keeps the document alive, its
/// bytes and its tree, and all that the findings point into.
///
/// Time and memory grow with the size of the document alone, whatever its names, languages, lines
/// and namespaces are. For any number of threads at once when it is complete.
class Report {
 public:
  /// A report that says nothing as yet.
  explicit Report(std::string document);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  [[nodiscard]] const std::vector<Diagnostic>& findings() const noexcept { return findings_; }
  /// The text of the document, which the spans of the findings are parts of.
  [[nodiscard]] const SourceText& source() const noexcept { return source_; }
  /// Where a finding is. Of a document with elements in entities the line alone is certain.
  [[nodiscard]] Place placeOf(const Diagnostic& finding) const noexcept;
  /// Where a part of the text is.
  [[nodiscard]] Place placeOf(Span span) const noexcept {
    return {source_.positionOf(span.begin), source_.positionOf(span.end)};
  }
  /// Where the name of the other element of a finding begins; as above.
  [[nodiscard]] Position otherOf(const Diagnostic& finding) const noexcept;

  /// Where the tags of an element begin; nothing when it is not certain, or when there are no
  /// findings.
  [[nodiscard]] std::optional<ElementTags> tagsOf(const util::XmlNode& element) const noexcept;

  /// The place of an element among all of the document; `Diagnostic::NO_INDEX` for null, and when
  /// there are no findings.
  [[nodiscard]] std::uint32_t numberOf(const util::XmlNode* element) const noexcept;

  /// @name For those who fill it
  /// @{
  /// The bytes of the document.
  [[nodiscard]] const std::string& document() const noexcept { return document_; }
  /// Adds a finding about an element, for null about the whole document. The row may be filled
  /// further until the next one is added.
  Diagnostic& add(FindingCode code, const util::XmlNode* element);
  /// Adds one about an attribute, the place of which may be `NO_INDEX`.
  Diagnostic& add(FindingCode code, const util::XmlNode& element, std::uint32_t attributeIndex);
  /// Remembers that the parser reported this of an attribute.
  void noteReported(const Diagnostic& finding) {
    reported_.emplace(finding.element, finding.attribute);
  }
  /// Whether the parser reported something about an attribute.
  [[nodiscard]] bool hasReported(const util::XmlNode& element, std::string_view attribute) const {
    return reported_.count({&element, attribute}) != 0;
  }
  /// Removes findings. Only before all are complete.
  void remove(const std::function<bool(const Diagnostic&)>& isUnwanted);
  /// A copy of a text that lives as long as the report; equal ones are kept once.
  [[nodiscard]] std::string_view keep(std::string_view text);
  /// Adds that the document, or its package, is rejected and why; 0 for a line or column that is
  /// not known. A place in the text goes before them.
  void reject(std::string_view message, std::uint32_t line, std::uint32_t column,
              std::optional<Span> place = std::nullopt,
              FindingCode code = FindingCode::DOCUMENT_REJECTED);
  /// Puts the findings in order and finds their places, in the tree that they point into; null when
  /// there is none.
  void complete(std::shared_ptr<const util::XmlDocument> tree);
  /// @}

 private:
  struct Element {
    const util::XmlNode* node;
    std::uint32_t number;  // in document order
  };

  void numberElements();
  void locate();

  std::string document_;
  SourceText source_;
  std::shared_ptr<const util::XmlDocument> tree_;
  std::vector<Element> elements_;  // by address
  std::vector<ElementTags> tags_;  // of the elements; empty when they are not certain
  std::vector<Diagnostic> findings_;
  std::set<std::pair<const util::XmlNode*, std::string_view>> reported_;
  std::set<std::string, std::less<>> texts_;
};

}  // namespace orvane::nimbrel::check
