#pragma once

#include <string>
#include <vector>

#include "config/Api.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/SharedPtr.h"
#include "util/UnicodeUtil.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config {

/// The small processing rules of the W3C Widgets vocabulary that every element handler needs.
///
/// A value: copies share the Unicode service and nothing else. Const members may run on several
/// threads at once if the service allows it (ours does). A null node throws
/// `std::invalid_argument` "node cannot be NULL"; a null `namespaceUri` means "no namespace". What
/// throws changes nothing (strong guarantee).
class NIMBREL_CONFIG_API ConfigRules {
 public:
  /// Throws `std::invalid_argument` "unicodeUtil cannot be NULL" for a null service.
  explicit ConfigRules(std::shared_ptr<util::UnicodeUtil> unicodeUtil);
  // Copies only: rules that were moved from would be without their service.
  ConfigRules(const ConfigRules&) = default;
  ConfigRules& operator=(const ConfigRules&) = default;
  ~ConfigRules() = default;

  /// The value of an attribute with white space squeezed and trimmed ("rule for getting a single
  /// attribute value"); None when absent, the empty string when it is all white space.
  [[nodiscard]] util::Option<std::string> getSingleAttributeValue(
      const std::shared_ptr<util::XmlNode>& node, const char* namespaceUri, const char* name) const;

  /// The same value with the node's language and direction ("displayable string").
  [[nodiscard]] util::Option<util::LocalizableString> getSingleDisplayableAttributeValue(
      const std::shared_ptr<util::XmlNode>& node, const char* namespaceUri, const char* name) const;

  /// The text of an element, nested elements included, one run for each text node with the
  /// language and direction in scope there ("rule for getting text content"). `normalize` squeezes
  /// and trims Unicode white space. A node without children gives an empty text whose language is
  /// empty and whose direction is `LTR`, whatever is in scope.
  [[nodiscard]] util::LocalizableString getTextContent(const std::shared_ptr<util::XmlNode>& node,
                                                       bool normalize) const;

  /// The nearest valid "dir" ("ltr", "rtl", "lro", "rlo") of the node or its ancestors; `LTR` when
  /// there is none. An invalid value counts as absent.
  [[nodiscard]] util::LocalizableString::Direction determineDirectionality(
      const std::shared_ptr<util::XmlNode>& node) const;

  /// Whether a node is an element of exactly this local name and namespace.
  [[nodiscard]] bool xmlNodeHasName(const std::shared_ptr<util::XmlNode>& node,
                                    const char* namespaceUri, const char* name) const;

  /// Whether a node itself carries an `xml:lang` that is not empty.
  [[nodiscard]] bool xmlNodeHasExplicitLang(const std::shared_ptr<util::XmlNode>& node) const;

  /// Whether a node itself carries an `xml:lang` equal to `lang`, byte for byte: no folding of
  /// case, no range matching.
  [[nodiscard]] bool xmlNodeHasExplicitLang(const std::shared_ptr<util::XmlNode>& node,
                                            const char* lang) const;

  /// "true" or "false", nothing else. Throws `std::invalid_argument` "input is null" or "input is
  /// not a valid boolean".
  bool parseBoolean(const char* input) const;

  /// An unsigned 32-bit decimal number. Deliberately lenient: white space is skipped wherever it
  /// stands, between digits too ("1 2" is 12), and the first other character ends the number
  /// ("12px" is 12, "-5" is 0). Throws `std::invalid_argument` "input is null" or "input" (empty,
  /// or ends in white space), `std::overflow_error` "input" above 4294967295.
  unsigned int parseNonNegativeInteger(const char* input) const;

  /// The space-separated keywords in their order, duplicates kept. Throws `std::invalid_argument`
  /// "input is null".
  std::vector<std::string> parseListOfKeywords(const char* input) const;

  /// Whether an id, possibly null, is one of the application store: 1 to 32 lower-case ASCII
  /// letters and digits.
  [[nodiscard]] bool isValidTavloApplicationId(const char* id) const;

 private:
  std::shared_ptr<util::UnicodeUtil> unicodeUtil_;
};

}  // namespace orvane::nimbrel::config
