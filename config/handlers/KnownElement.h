#pragma once

#include <memory>
#include <string_view>

#include "config/BasicConfig.h"
#include "config/ConfigRules.h"
#include "config/ElementDescription.h"
#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/Reporter.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// `EXTENSION_NAMESPACE` with its length known to the compiler.
inline constexpr std::string_view EXTENSION = NIMBREL_EXTENSION_NAMESPACE;

/// What a handler works with.
struct HandlerContext {
  NimbrelConfigParser& parser;  ///< for its error text
  const ConfigRules& rules;
  BasicConfig& record;
  ParseObserver* observer;  ///< may be null

  [[nodiscard]] Reporter reporterOf(const util::XmlNode& element) const noexcept {
    return {observer, &element};
  }
};

/// An element below the root: what it may contain, and how it is read. Each is defined in the file
/// of its element, and listed in Elements.cpp.
struct KnownElement {
  ElementDescription description;
  /// Reads an element of this name, which is not null. False when it stopped early.
  bool (*handle)(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node);
};

/// A handler that is a member of the parser.
template <auto METHOD>
bool callMember(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  (context.parser.*METHOD)(node);
  return true;
}

/// The element of a node's name and namespace; null when there is none.
[[nodiscard]] const KnownElement* findKnownElement(const util::XmlNode& node) noexcept;

}  // namespace orvane::nimbrel::config::detail
