#include "config/ElementReader.h"

#include <stdexcept>

#include "config/ValueRules.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {

using util::Option;
using zel::util::StringUtil;

namespace {

/// An attribute trimmed, for readers to which white space within the value makes no difference.
std::string_view trimmedView(const util::XmlNode& element,
                             const AttributeDescription& attribute) noexcept {
  return StringUtil::trimmed(element.attributeView(attribute.name));
}

}  // namespace

const util::XmlNode& requireNode(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr) {
    throw std::invalid_argument("node cannot be NULL");
  }
  return *node;
}

Option<std::string> readAttribute(const util::XmlNode& node, std::string_view name,
                                  std::string_view namespaceUri) {
  Option<std::string> value;
  const std::string_view written = node.attributeView(name, namespaceUri);
  if (written.data() != nullptr) {
    StringUtil::squeeze(value.emplace(StringUtil::trimmed(written)));
  }
  return value;
}

Option<std::string> ElementReader::text(const AttributeDescription& attribute) const {
  return readAttribute(element_, attribute.name,
                       attribute.isExtension ? extensionNamespace() : std::string_view());
}

Option<std::string> ElementReader::presentText(const AttributeDescription& attribute) const {
  Option<std::string> value = text(attribute);
  if (!value) {
    report(FindingCode::MISSING_ATTRIBUTE, attribute, value);
  }
  return value;
}

Option<std::string> ElementReader::filledText(const AttributeDescription& attribute) const {
  Option<std::string> value = presentText(attribute);
  if (value && value.get().empty()) {
    report(FindingCode::MISSING_ATTRIBUTE, attribute, value);
    value.reset();
  }
  return value;
}

Option<unsigned int> ElementReader::number(const AttributeDescription& attribute) const {
  const Option<std::string> value = text(attribute);
  const IntegerReading reading = readNonNegativeInteger(value ? value.get() : std::string_view());
  Option<unsigned int> number;
  if (reading.fault == IntegerFault::NONE) {
    number = reading.value;
  } else if (value) {
    report(FindingCode::NOT_A_NUMBER, attribute, value);
  }
  return number;
}

Option<unsigned int> ElementReader::size(const AttributeDescription& attribute) const {
  const std::string_view text = trimmedView(element_, attribute);
  Option<unsigned int> size = readSize(text);
  if (!size && text.data() != nullptr) {
    report(FindingCode::NOT_A_NUMBER, attribute, text);
  }
  return size;
}

std::optional<bool> ElementReader::boolean(const AttributeDescription& attribute) const {
  const std::string_view text = trimmedView(element_, attribute);
  const std::optional<bool> value = readBoolean(text);
  if (!value && text.data() != nullptr) {
    report(FindingCode::NOT_A_BOOLEAN, attribute, text);
  }
  return value;
}

}  // namespace orvane::nimbrel::config::detail
