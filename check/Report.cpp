#include "check/Report.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "check/Vocabulary.h"

namespace orvane::nimbrel::check {
namespace {

using util::XmlNode;

/// The element behind another one in document order, or null. Documents are not deep.
const XmlNode* following(const XmlNode* element) noexcept {
  if (const XmlNode* const child = element->firstElementChild()) {
    return child;
  }
  for (; element != nullptr; element = element->parent()) {
    if (const XmlNode* const sibling = element->nextElementSibling()) {
      return sibling;
    }
  }
  return nullptr;
}

/// The part of a start tag that a finding is about.
Span placeIn(const Tag& tag, const Diagnostic& finding) noexcept {
  if (finding.attribute == "xmlns" && !tag.declarations.empty()) {
    return tag.name;  // the prefix tells which declaration is meant
  }
  if (finding.attributeIndex >= tag.attributes.size()) {
    return tag.name;  // absent, or from the document type
  }
  const TagAttribute& attribute = tag.attributes[finding.attributeIndex];
  if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
    return attribute.name;
  }
  // Of an empty value the quotes.
  const Span& value = attribute.value;
  return value.isEmpty() ? Span{value.begin - 1, value.end + 1} : value;
}

}  // namespace

Report::Report(std::string document) : document_(std::move(document)), source_(document_) {}

Diagnostic& Report::add(FindingCode code, const XmlNode* element) {
  Diagnostic& finding = findings_.emplace_back();
  finding.code = code;
  finding.element = element;
  finding.number = static_cast<std::uint32_t>(findings_.size());
  return finding;
}

Diagnostic& Report::add(FindingCode code, const XmlNode& element, std::uint32_t attributeIndex) {
  Diagnostic& finding = add(code, &element);
  if (attributeIndex < element.attributeCount()) {
    const XmlNode::Attribute attribute = element.attributeAt(attributeIndex);
    finding.attributeIndex = attributeIndex;
    finding.attribute = attribute.namespaceUri.data() == nullptr
                            ? attribute.name
                            : keep(displayName(attribute.name, attribute.namespaceUri));
    finding.value = attribute.value;
  }
  return finding;
}

void Report::remove(const std::function<bool(const Diagnostic&)>& isUnwanted) {
  findings_.erase(std::remove_if(findings_.begin(), findings_.end(), isUnwanted), findings_.end());
}

std::string_view Report::keep(std::string_view text) {
  const auto found = texts_.find(text);
  return found == texts_.end() ? *texts_.emplace(text).first : *found;
}

void Report::reject(std::string_view message, std::uint32_t line, std::uint32_t column,
                    std::optional<Span> place, FindingCode code) {
  Diagnostic& finding = add(code, nullptr);
  finding.value = keep(message);
  finding.line = line;
  finding.column = column;
  if (place) {
    finding.span = *place;
    finding.hasSpan = true;
  }
}

void Report::complete(std::shared_ptr<const util::XmlDocument> tree) {
  tree_ = std::move(tree);
  reported_.clear();
  if (findings_.empty()) {
    return;
  }
  numberElements();
  locate();
  // By place; where places are not known, by element.
  std::sort(findings_.begin(), findings_.end(), [](const auto& left, const auto& right) {
    return std::tie(left.span.begin, left.elementNumber, left.number) <
           std::tie(right.span.begin, right.elementNumber, right.number);
  });
}

void Report::numberElements() {
  const XmlNode* const root = tree_ == nullptr ? nullptr : tree_->getDocumentElement().get();
  for (const XmlNode* node = root; node != nullptr; node = following(node)) {
    elements_.push_back({node, static_cast<std::uint32_t>(elements_.size())});
  }
  std::sort(elements_.begin(), elements_.end(), [](const Element& left, const Element& right) {
    return std::less<>()(left.node, right.node);
  });
  if (root != nullptr) {
    tags_ = elementsOf(source_.text());
  }
  if (tags_.size() != elements_.size()) {
    tags_.clear();  // an entity brought some
  }
}

std::uint32_t Report::numberOf(const XmlNode* element) const noexcept {
  const auto found = std::lower_bound(
      elements_.begin(), elements_.end(), element,
      [](const Element& entry, const XmlNode* node) { return std::less<>()(entry.node, node); });
  return found == elements_.end() || found->node != element ? Diagnostic::NO_INDEX : found->number;
}

Place Report::placeOf(const Diagnostic& finding) const noexcept {
  Place place;
  if (finding.hasSpan) {
    place = placeOf(finding.span);
  } else {
    place.begin.line = finding.line;
    place.begin.column = finding.column;
  }
  return place;
}

Position Report::otherOf(const Diagnostic& finding) const noexcept {
  Position position;
  if (finding.other != nullptr) {
    const std::optional<ElementTags> tags = tagsOf(*finding.other);
    position.line = finding.other->getLineNumber();
    position = tags ? source_.positionOf(tags->start + 1) : position;
  }
  return position;
}

std::optional<ElementTags> Report::tagsOf(const XmlNode& element) const noexcept {
  const std::uint32_t number = numberOf(&element);
  return number < tags_.size() ? std::optional(tags_[number]) : std::nullopt;
}

void Report::locate() {
  for (Diagnostic& finding : findings_) {
    finding.elementNumber = finding.element == nullptr ? 0 : numberOf(finding.element);
  }
  std::sort(findings_.begin(), findings_.end(), [](const auto& left, const auto& right) {
    return std::tie(left.elementNumber, left.number) < std::tie(right.elementNumber, right.number);
  });
  // Each tag is read once, for all findings on it.
  Tag tag;
  const XmlNode* read = nullptr;
  for (Diagnostic& finding : findings_) {
    if (finding.element == nullptr) {
      continue;
    }
    finding.line = finding.element->getLineNumber();
    if (finding.elementNumber < tags_.size()) {
      if (std::exchange(read, finding.element) != finding.element) {
        tag = readTag(source_.text(), tags_[finding.elementNumber].start);
      }
      finding.hasSpan = true;
      finding.span = placeIn(tag, finding);
      if (finding.code == FindingCode::UNKNOWN_ELEMENT) {
        finding.name = source_.text().substr(tag.name.begin, tag.name.end - tag.name.begin);
      }
      if (finding.isText) {
        const Span text = textIn(source_.text(), tags_[finding.elementNumber].start);
        finding.span = text.isEmpty() ? finding.span : text;
      }
    }
  }
}

}  // namespace orvane::nimbrel::check
