#include "check/Fix.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "check/Decoder.h"
#include "check/NearestName.h"
#include "check/Scope.h"
#include "check/Suggestions.h"
#include "check/ValueFix.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"

namespace orvane::nimbrel::check {
namespace {

using config::AttributeDescription;
using config::ChildDescription;
using config::ElementDescription;
using util::XmlNode;
using Attributes = config::DescriptionList<AttributeDescription>;
using Edits = std::vector<Edit>;

constexpr std::string_view EXTENSION_PREFIX = "tavlo:";  // as findings spell names

std::string_view localPart(std::string_view name) noexcept {
  return name.substr(name.find(':') + 1);
}

bool isOurs(std::string_view namespaceUri) noexcept {
  return namespaceUri.data() == nullptr || namespaceUri == config::W3C_WIDGETS_NAMESPACE ||
         namespaceUri == config::EXTENSION_NAMESPACE;
}

/// Elements of other vocabularies are none of our business.
bool mayBeRenamed(const XmlNode& element) noexcept {
  return isOurs(element.namespaceView()) ||
         (element.parent() == nullptr &&
          suggestedNamespace(element.namespaceView()) == config::W3C_WIDGETS_NAMESPACE);
}

/// Whether an element was meant to have a name that is spelt almost like its own: a letter replaced
/// in a short name ("game"), and some words, mean something else.
bool isCertain(std::string_view written, std::string_view meant) {
  constexpr std::size_t SHORT = 4;
  constexpr std::string_view WORDS[] = {"reference", "context", "contend",  "resource",
                                        "gesture",   "expert",  "massaging"};
  return looksLike(written, meant) ||
         ((meant.size() > SHORT || written.size() != meant.size() ||
           std::is_permutation(written.begin(), written.end(), meant.begin())) &&
          std::none_of(std::begin(WORDS), std::end(WORDS),
                       [&](std::string_view word) { return looksLike(written, word); }));
}

class Fixer {
 public:
  explicit Fixer(const Report& report)
      : report_(report), scope_(report), encoding_(encodingOf(report.document())) {}

  std::vector<Fix> fixAll() {
    const std::vector<Diagnostic>& findings = report_.findings();
    for (auto first = findings.begin(); first != findings.end();) {
      const auto last = std::find_if(first, findings.end(), [&](const Diagnostic& finding) {
        return finding.element != first->element;
      });
      if (first->element != nullptr && scope_.enter(*first->element)) {
        fixElement({&*first, static_cast<std::size_t>(last - first)});
      }
      first = last;
    }
    return std::move(fixes_);
  }

 private:
  using Findings = config::DescriptionList<Diagnostic>;

  void fixElement(Findings findings) {
    countMeant(*findings[0].element, findings);
    for (const Diagnostic& finding : findings) {
      if (!finding.isText) {
        add(finding);
      }
    }
  }

  /// How often each attribute is meant: one that would stand twice is not certain.
  void countMeant(const XmlNode& element, Findings findings) {
    meant_.clear();
    for (const Diagnostic& finding : findings) {
      if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
        ++meant_[certainAttribute(element, finding.attributeIndex, attributesOf(element))];
      }
    }
  }

  void add(const Diagnostic& finding) {
    Fix fix = {&finding, {}};
    switch (finding.code) {
      case FindingCode::WRONG_ROOT:
        fix.isNamespace = finding.attribute == "xmlns";
        fix.edits = fix.isNamespace ? namespaceEdits(finding) : renaming(*finding.element, finding);
        break;
      case FindingCode::UNKNOWN_ELEMENT:
        fix.isNamespace = finding.attribute == "xmlns" || isUndeclared(finding.element->nameView());
        fix.edits = finding.attribute == "xmlns" ? namespaceEdits(finding)
                    : fix.isNamespace            ? declaration()
                                                 : renaming(*finding.element, finding);
        break;
      case FindingCode::UNKNOWN_ATTRIBUTE: {
        const XmlNode::Attribute attribute = finding.element->attributeAt(finding.attributeIndex);
        const bool isMisspelt = !isOurs(attribute.namespaceUri);
        fix.isNamespace = isMisspelt || isUndeclared(attribute.name);
        fix.edits = isMisspelt        ? attributeNamespace(finding)
                    : fix.isNamespace ? declaration()
                                      : attributeRenaming(*finding.element, finding.attributeIndex,
                                                          attributesOf(*finding.element));
        break;
      }
      case FindingCode::UNEXPECTED_CHILD:
      case FindingCode::NOT_READ:
        fix.edits = unblocking(finding);
        break;
      default:
        fix.edits = valueEdits(finding);
        break;
    }
    const bool canBeWritten =
        std::all_of(fix.edits.begin(), fix.edits.end(), [&](const Edit& edit) {
          return encoding_ && (encoding_->empty() || encode(edit.text, *encoding_));
        });
    if (!fix.edits.empty() && canBeWritten) {
      if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
        unblocked_ = finding.element;
      }
      fixes_.push_back(std::move(fix));
    }
  }

  /// A name whose prefix should be that of the extension elements, but is not declared.
  static bool isUndeclared(std::string_view name) noexcept {
    return name.substr(0, EXTENSION_PREFIX.size()) == EXTENSION_PREFIX;
  }

  [[nodiscard]] Edits declaration() {
    if (scope_.declarationOf(EXTENSION_PREFIX) != nullptr) {
      return {};  // of an empty namespace, which declares nothing
    }
    const std::size_t end = scope_.rootTag().name.end;
    return {{{end, end}, " xmlns:tavlo=\"" + escapedValue(config::EXTENSION_NAMESPACE, '"') + '"'}};
  }

  Edits namespaceEdits(const Diagnostic& finding) {
    const bool isRoot = finding.element->parent() == nullptr;
    const TagAttribute* const declaration = scope_.declarationOf(scope_.text(scope_.tag().name));
    if (finding.value.data() == nullptr && isRoot && declaration == nullptr) {
      const std::size_t end = scope_.tag().name.end;
      return {{{end, end}, std::string(" xmlns=\"") + config::W3C_WIDGETS_NAMESPACE + '"'}};
    }
    return isRoot && suggestedNamespace(finding.value) != config::W3C_WIDGETS_NAMESPACE
               ? Edits()
               : corrected(declaration, finding.value);
  }

  Edits attributeNamespace(const Diagnostic& finding) {
    if (finding.attributeIndex >= scope_.tag().attributes.size()) {
      return {};
    }
    const std::string_view name = scope_.text(scope_.tag().attributes[finding.attributeIndex].name);
    return corrected(scope_.declarationOf(name),
                     finding.element->attributeAt(finding.attributeIndex).namespaceUri);
  }

  /// A misspelt namespace where it is declared.
  [[nodiscard]] Edits corrected(const TagAttribute* declaration,
                                std::string_view namespaceUri) const {
    const std::string_view meant = suggestedNamespace(namespaceUri);
    if (meant.empty() || declaration == nullptr ||
        scope_.text(declaration->value) != namespaceUri) {
      return {};
    }
    return {{declaration->value, escapedValue(meant, quoteOf(declaration->value))}};
  }

  [[nodiscard]] char quoteOf(Span value) const noexcept {
    return report_.source().text()[value.begin - 1];
  }

  /// The name in both tags of an element.
  Edits renaming(const XmlNode& element, Diagnostic finding) {
    finding.code =
        element.parent() == nullptr ? FindingCode::WRONG_ROOT : FindingCode::UNEXPECTED_CHILD;
    finding.attribute = {};
    const std::string meant = suggestionFor(finding);
    const std::optional<std::string> name = element.parent() == nullptr && !meant.empty()
                                                ? scope_.prefix() + meant
                                                : written(meant, false);
    const Span tag = scope_.tag().name;
    const std::string_view before = scope_.text(tag);
    if (!name || *name == before || !mayBeRenamed(element) ||
        !isCertain(localPart(before), localPart(*name)) ||
        localPart(before) != element.nameView() || hasChild(element, localPart(*name))) {
      return {};
    }
    Edits edits = {{tag, *name}};
    if (const std::size_t end = report_.tagsOf(element)->end) {
      edits.push_back({{end + 2, end + 2 + before.size()}, *name});
    }
    return edits;
  }

  /// Whether it may be a list of what it seems to be: "icons" around "icon".
  static bool hasChild(const XmlNode& element, std::string_view name) noexcept {
    const XmlNode* child = element.firstElementChild();
    while (child != nullptr && child->nameView() != name) {
      child = child->nextElementSibling();
    }
    return child != nullptr;
  }

  /// A name, spelt as in findings, as it has to be written in this tag. None for an empty one, and
  /// where its namespace has no prefix.
  std::optional<std::string> written(std::string_view name, bool isAttribute) {
    const bool isExtension = isUndeclared(name);
    if (name.empty()) {
      return std::nullopt;
    }
    const std::string local(isExtension ? localPart(name) : name);
    if (isAttribute && !isExtension) {
      return local;
    }
    const std::optional<std::string> prefix = scope_.prefixFor(
        isExtension ? config::EXTENSION_NAMESPACE : config::W3C_WIDGETS_NAMESPACE, isAttribute);
    return prefix ? std::optional(*prefix + local) : std::nullopt;
  }

  /// The attribute that was meant, spelt as in findings; empty when that is not certain.
  static std::string certainAttribute(const XmlNode& element, std::size_t index, Attributes known) {
    const XmlNode::Attribute attribute = element.attributeAt(index);
    if (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE) {
      return has(known, attribute.name) ? std::string(attribute.name) : std::string();
    }
    const std::string meant = suggestedAttribute(element, index, known);
    // It would hide the element from users of other languages.
    return meant == "xml:lang" ? "" : meant;
  }

  static bool has(Attributes known, std::string_view name) noexcept {
    return std::any_of(known.begin(), known.end(), [&](const AttributeDescription& row) {
      return row.name == name && !row.isExtension;
    });
  }

  Edits attributeRenaming(const XmlNode& element, std::size_t index, Attributes known) {
    const std::string meant = certainAttribute(element, index, known);
    const std::optional<std::string> name = written(meant, true);
    const std::string_view space =
        isUndeclared(meant) ? std::string_view(config::EXTENSION_NAMESPACE) : std::string_view();
    if (!name || index >= scope_.tag().attributes.size() || meant_[meant] != 1 ||
        element.attributeView(localPart(meant), space).data() != nullptr) {
      return {};
    }
    const Span before = scope_.tag().attributes[index].name;
    return localPart(scope_.text(before)) == localPart(element.attributeAt(index).name)
               ? Edits{{before, *name}}
               : Edits();
  }

  Edits valueEdits(const Diagnostic& finding) {
    if (finding.attributeIndex >= scope_.tag().attributes.size()) {
      return {};
    }
    const TagAttribute& attribute = scope_.tag().attributes[finding.attributeIndex];
    return localPart(scope_.text(attribute.name)) ==
                   localPart(finding.element->attributeAt(finding.attributeIndex).name)
               ? fixesOfValue(finding, report_.source().text(), attribute.value)
               : Edits();
  }

  /// What a child of an extension element needs to be read: its name and those of its attributes,
  /// together, so that what follows it is read as well; else each fix would show the next mistake
  /// alone.
  Edits unblocking(const Diagnostic& finding) {
    if (finding.code == FindingCode::NOT_READ && unblocked_ != finding.other) {
      return {};
    }
    const XmlNode& child = *finding.element;
    const ElementDescription* const parent = describe(*child.parent());
    const ChildDescription* known = parent == nullptr ? nullptr : describeChild(*parent, child);
    Edits edits;
    if (known == nullptr) {
      edits = renaming(child, finding);
      known = edits.empty() ? nullptr : meantChild(*parent, edits.front().text);
    }
    if (known == nullptr) {
      unblocked_ = nullptr;
      return {};
    }
    if (finding.code == FindingCode::UNEXPECTED_CHILD) {
      unblocked_ = &child;
    }
    const Edits names = attributeEdits(child, known->attributes);
    edits.insert(edits.end(), names.begin(), names.end());
    for (const AttributeDescription& row : known->attributes) {
      if (row.isRequired && child.attributeView(row.name).data() == nullptr &&
          meant_[std::string(row.name)] != 1) {
        unblocked_ = nullptr;
      }
    }
    return edits;
  }

  static const ChildDescription* meantChild(const ElementDescription& parent,
                                            std::string_view name) noexcept {
    for (const ChildDescription& known : parent.children) {
      if (known.name == localPart(name)) {
        return &known;
      }
    }
    return nullptr;
  }

  Edits attributeEdits(const XmlNode& child, Attributes known) {
    std::vector<std::size_t> unknown;
    meant_.clear();
    for (std::size_t i = 0; i < child.attributeCount(); ++i) {
      const XmlNode::Attribute attribute = child.attributeAt(i);
      const bool isKnown = attribute.namespaceUri.data() == nullptr && has(known, attribute.name);
      const std::string meant = isKnown || !isOurs(attribute.namespaceUri)
                                    ? std::string()
                                    : certainAttribute(child, i, known);
      if (!meant.empty()) {
        ++meant_[meant];
        unknown.push_back(i);
      }
    }
    Edits edits;
    for (const std::size_t index : unknown) {
      const Edits edit = attributeRenaming(child, index, known);
      edits.insert(edits.end(), edit.begin(), edit.end());
    }
    return edits;
  }

  const Report& report_;
  Scope scope_;
  std::optional<std::string> encoding_;
  std::map<std::string, std::size_t> meant_;  // attributes, of the element at hand
  const XmlNode* unblocked_ = nullptr;        // the last element that was fixed
  std::vector<Fix> fixes_;
};

}  // namespace

std::vector<Fix> fixesOf(const Report& report) {
  return Fixer(report).fixAll();
}

}  // namespace orvane::nimbrel::check
