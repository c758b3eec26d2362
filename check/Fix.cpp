#include "check/Fix.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "check/Decoder.h"
#include "check/Scope.h"
#include "check/Suggestions.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::AttributeDescription;
using config::ValueKind;
using util::XmlNode;
using zel::util::StringUtil;
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

std::string escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    escaped += c == '&'    ? "&amp;"
               : c == '<'  ? "&lt;"
               : c == '"'  ? "&quot;"
               : c == '\'' ? "&apos;"
                           : std::string(1, c);
  }
  return escaped;
}

class Fixer {
 public:
  explicit Fixer(const Report& report)
      : report_(report), scope_(report), encoding_(encodingOf(report.document())) {}

  std::vector<Fix> fixAll() {
    const XmlNode* element = nullptr;
    bool isCertain = false;
    for (const Diagnostic& finding : report_.findings()) {
      if (finding.element != element) {
        element = finding.element;
        isCertain = element != nullptr && scope_.enter(*element);
        if (isCertain) {
          readMeant(*element, attributesOf(*element));
        }
      }
      if (isCertain && !finding.isText) {
        add(finding);
      }
    }
    return std::move(fixes_);
  }

 private:
  void add(const Diagnostic& finding) {
    Fix fix = {&finding, {}};
    if (std::optional<Edits> edits = namespaceEdits(finding)) {
      fix.isNamespace = true;
      fix.edits = std::move(*edits);
    } else {
      switch (finding.code) {
        case FindingCode::WRONG_ROOT:
        case FindingCode::UNKNOWN_ELEMENT:
          fix.edits = renaming(finding);
          break;
        case FindingCode::UNKNOWN_ATTRIBUTE:
          fix.edits = attributeRenaming(*finding.element, finding.attributeIndex);
          break;
        case FindingCode::UNEXPECTED_CHILD:
        case FindingCode::NOT_READ:
          fix.edits = unblocking(finding);
          break;
        default:
          fix.edits = valueEdits(finding);
          break;
      }
    }
    const bool canBeWritten =
        encoding_ && std::all_of(fix.edits.begin(), fix.edits.end(), [&](const Edit& edit) {
          return encode(edit.text, *encoding_).has_value();
        });
    if (!fix.edits.empty() && canBeWritten) {
      if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
        unblocked_ = finding.element;
      }
      fixes_.push_back(std::move(fix));
    }
  }

  static bool hasExtensionPrefix(std::string_view name) noexcept {
    return name.substr(0, EXTENSION_PREFIX.size()) == EXTENSION_PREFIX;
  }

  static Edit inserted(std::size_t at, const std::string& attribute, std::string_view value) {
    return {{at, at}, ' ' + attribute + "=\"" + escaped(value) + '"'};
  }

  /// What puts a namespace right; none where something else is wrong.
  std::optional<Edits> namespaceEdits(const Diagnostic& finding) {
    const XmlNode& element = *finding.element;
    const std::string_view tag = scope_.text(scope_.tag().name);
    const std::string_view space = element.namespaceView();
    if (finding.attribute == "xmlns") {
      const bool isRoot = element.parent() == nullptr;
      const std::string meant = isRoot && space.data() == nullptr ? config::W3C_WIDGETS_NAMESPACE
                                                                  : suggestedNamespace(space);
      return isRoot && meant != config::W3C_WIDGETS_NAMESPACE ? Edits()
                                                              : declared(tag, space, meant);
    }
    if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
      const XmlNode::Attribute attribute = element.attributeAt(finding.attributeIndex);
      if (!isOurs(attribute.namespaceUri)) {
        return declared(nameOf(element, finding.attributeIndex), attribute.namespaceUri,
                        suggestedNamespace(attribute.namespaceUri));
      }
      return hasExtensionPrefix(attribute.name)
                 ? std::optional(declared(attribute.name, {}, config::EXTENSION_NAMESPACE))
                 : std::nullopt;
    }
    const bool isPrefixWrong = finding.code == FindingCode::UNKNOWN_ELEMENT &&
                               hasExtensionPrefix(tag) &&
                               (element.nameView() == tag || suggestedElement(element).text == tag);
    return isPrefixWrong ? std::optional(declared(tag, space, config::EXTENSION_NAMESPACE))
                         : std::nullopt;
  }

  /// Lets the prefix of a name in this tag stand for a namespace.
  Edits declared(std::string_view name, std::string_view before, const std::string& meant) {
    const TagAttribute* const declaration = scope_.declarationOf(name);
    if (declaration == nullptr && before.empty()) {
      const std::string prefix(name.substr(0, name.find(':')));
      return {
          inserted(scope_.rootTag().name.end, prefix == name ? "xmlns" : "xmlns:" + prefix, meant)};
    }
    // An empty namespace is none.
    return meant.empty() || before.empty() || declaration == nullptr ||
                   scope_.text(declaration->value) != before
               ? Edits()
               : Edits{{declaration->value, escaped(meant)}};
  }

  /// The name of an attribute as it is written; empty when it is not certain where.
  [[nodiscard]] std::string_view nameOf(const XmlNode& element, std::size_t index) const {
    const std::vector<TagAttribute>& attributes = scope_.tag().attributes;
    if (index >= attributes.size()) {
      return {};
    }
    const std::string_view name = scope_.text(attributes[index].name);
    return localPart(name) == localPart(element.attributeAt(index).name) ? name
                                                                         : std::string_view();
  }

  /// The name in both tags of an element.
  Edits renaming(const Diagnostic& finding) {
    const XmlNode& element = *finding.element;
    const Suggestion meant = suggestedElement(element);
    const std::string_view before = scope_.text(scope_.tag().name);
    // Elements of other vocabularies are none of our business.
    const bool isForeign =
        !isOurs(element.namespaceView()) &&
        (element.parent() != nullptr || suggestedNamespace(element.namespaceView()).empty());
    if (!meant.isCertain || isForeign || localPart(before) != element.nameView() ||
        hasChild(element, localPart(meant.text))) {
      return {};
    }
    const std::optional<std::string> name =
        element.parent() == nullptr ? scope_.prefix() + meant.text : written(meant.text, false);
    if (!name || *name == before) {
      return {};
    }
    Edits edits = {{scope_.tag().name, *name}};
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

  /// A name, spelt as in findings, as it has to be written in this tag. None where its namespace
  /// has no prefix.
  std::optional<std::string> written(std::string_view name, bool isAttribute) {
    const bool isExtension = hasExtensionPrefix(name);
    if (isAttribute && !isExtension) {
      return std::string(name);
    }
    std::optional<std::string> prefix = scope_.prefixFor(
        isExtension ? config::EXTENSION_NAMESPACE : config::W3C_WIDGETS_NAMESPACE, isAttribute);
    if (prefix) {
      prefix->append(isExtension ? localPart(name) : name);
    }
    return prefix;
  }

  /// What each attribute of an element that may have these is, or certainly was meant to be, and
  /// how often: one that would stand twice is not certain.
  void readMeant(const XmlNode& element, Attributes known) {
    meant_.clear();
    counts_.clear();
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
      const XmlNode::Attribute attribute = element.attributeAt(i);
      const AttributeDescription* const row = findName(known, attribute.name);
      std::string meant;
      if (row != nullptr &&
          (attribute.namespaceUri == namespaceOf(*row) ||
           (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE && !row->isExtension))) {
        meant = displayName(row->name, row->isExtension);
      } else if (isOurs(attribute.namespaceUri)) {
        const Suggestion suggestion = suggestedAttribute(element, i, known);
        // "xml:lang" would hide the element from users of other languages.
        meant = suggestion.isCertain && suggestion.text != "xml:lang" ? suggestion.text : "";
      }
      ++counts_[meant];
      meant_.push_back(std::move(meant));
    }
  }

  Edits attributeRenaming(const XmlNode& element, std::size_t index) {
    const std::string& meant = meant_[index];
    const std::string_view before = nameOf(element, index);
    if (meant.empty() || before.empty() || counts_[meant] != 1) {
      return {};
    }
    const std::optional<std::string> name = written(meant, true);
    return name && *name != before ? Edits{{scope_.tag().attributes[index].name, *name}} : Edits();
  }

  /// The value in its quotes; white space around what is wrong stays.
  Edits valueEdits(const Diagnostic& finding) {
    const ValueKind kind = kindOfValue(*finding.element, finding.attribute);
    const Suggestion meant =
        isNumeric(kind) ? suggestedNumber(kind, finding.value) : suggestionFor(finding);
    if (!meant.isCertain || meant.text.empty() ||
        nameOf(*finding.element, finding.attributeIndex).empty()) {
      return {};
    }
    const Span span = scope_.tag().attributes[finding.attributeIndex].value;
    const std::string_view whole = scope_.text(span);
    const std::string_view core = finding.attribute == "dir"  // where white space counts
                                      ? whole
                                      : StringUtil::trimmed(whole);
    // What spans lines was laid out by its author.
    if (core.find_first_of("\r\n") != std::string_view::npos || core == meant.text) {
      return {};
    }
    const std::size_t begin = span.begin + static_cast<std::size_t>(core.data() - whole.data());
    Edits edits = {{{begin, begin + core.size()}, escaped(meant.text)}};
    if (finding.code == FindingCode::NOT_AN_ORIGIN) {
      const bool isWildcard = finding.value.find("*.") != std::string_view::npos;
      const bool hasSubdomains = counts_["subdomains"] != 0;
      if (isWildcard && !hasSubdomains) {
        edits.push_back(inserted(span.end + 1, "subdomains", "true"));
      } else if (isWildcard ? finding.element->attributeView("subdomains") != "true"
                            : hasSubdomains && meant.text == "*") {
        return {};
      }
    }
    return edits;
  }

  /// What a child of an extension element needs to be read: its name and those of its attributes,
  /// together, so that what follows it is read as well; else each fix would show the next mistake
  /// alone.
  Edits unblocking(const Diagnostic& finding) {
    if (finding.code == FindingCode::NOT_READ && unblocked_ != finding.other) {
      return {};
    }
    const XmlNode& child = *finding.element;
    const auto* const parent = describe(*child.parent());
    const auto* known = parent == nullptr ? nullptr : describeChild(*parent, child);
    Edits edits;
    if (known == nullptr) {
      edits = renaming(finding);
      known = edits.empty() ? nullptr : findName(parent->children, localPart(edits[0].text));
    }
    if (known == nullptr) {
      unblocked_ = nullptr;
      return {};
    }
    readMeant(child, known->attributes);
    for (std::size_t i = 0; i < meant_.size(); ++i) {
      const Edits names = attributeRenaming(child, i);
      edits.insert(edits.end(), names.begin(), names.end());
    }
    const bool isComplete = std::all_of(
        known->attributes.begin(), known->attributes.end(), [&](const AttributeDescription& row) {
          return !row.isRequired || child.attributeView(row.name).data() != nullptr ||
                 counts_[std::string(row.name)] == 1;
        });
    if (!isComplete || finding.code == FindingCode::UNEXPECTED_CHILD) {
      unblocked_ = isComplete ? &child : nullptr;
    }
    return edits;
  }

  const Report& report_;
  Scope scope_;
  std::optional<std::string> encoding_;
  std::vector<std::string> meant_;             // attributes, of the element at hand
  std::map<std::string, std::size_t> counts_;  // of each of them
  const XmlNode* unblocked_ = nullptr;         // the last element that was fixed
  std::vector<Fix> fixes_;
};

}  // namespace

std::vector<Fix> fixesOf(const Report& report) {
  return Fixer(report).fixAll();
}

}  // namespace orvane::nimbrel::check
