#pragma once

#include <string>

#include "config/Api.h"
#include "config/ConfigRules.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/SharedPtr.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config {

/// An XML element kept in the record, so that consumers can read what the parser does not
/// interpret, by the same rules as the parser.
///
/// It shares its node, and with it the document. Copyable. Const members may run on several threads
/// at once. It throws only `std::bad_alloc` after construction, and changes nothing then (strong
/// guarantee).
class NIMBREL_CONFIG_API Element {
 public:
  /// Throws `std::invalid_argument` "node cannot be NULL" for a null node.
  Element(std::shared_ptr<util::XmlNode> node, const ConfigRules& rules);
  Element(const Element&);
  Element& operator=(const Element&);
  virtual ~Element();

  /// The local name.
  [[nodiscard]] virtual util::Option<std::string> getName() const;
  /// The namespace IRI; None for no namespace.
  [[nodiscard]] virtual util::Option<std::string> getNamespace() const;
  /// The text, nested elements included; `normalize` squeezes and trims white space.
  [[nodiscard]] virtual util::LocalizableString getTextContent(bool normalize) const;
  /// The text as written.
  [[nodiscard]] virtual util::LocalizableString getTextContent() const;
  /// An attribute with white space squeezed and trimmed. A null `namespaceUri` asks for one without
  /// namespace. Mind the order: here the name comes first, in `ConfigRules` second.
  [[nodiscard]] virtual util::Option<std::string> getSingleAttributeValue(
      const char* name, const char* namespaceUri) const;
  /// The same for an attribute without namespace; calls the form above.
  [[nodiscard]] virtual util::Option<std::string> getSingleAttributeValue(const char* name) const;
  /// An attribute with the element's language and direction.
  [[nodiscard]] virtual util::Option<util::LocalizableString> getSingleDisplayableAttributeValue(
      const char* name, const char* namespaceUri) const;
  /// The same for an attribute without namespace; calls the form above.
  [[nodiscard]] virtual util::Option<util::LocalizableString> getSingleDisplayableAttributeValue(
      const char* name) const;

  /// The node itself; never null.
  [[nodiscard]] const std::shared_ptr<util::XmlNode>& getNode() const noexcept { return node; }

 protected:
  /// @name State, for a subclass to read by
  /// @{
  std::shared_ptr<util::XmlNode> node;  ///< never null; a subclass keeps to that
  ConfigRules rules;                    ///< those of the parser
  /// @}
};

}  // namespace orvane::nimbrel::config
