#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config/Api.h"
#include "config/BasicConfig.h"
#include "config/ConfigParser.h"
#include "config/ConfigRules.h"
#include "config/ParseObserver.h"
#include "util/IDNConverter.h"
#include "util/IRI.h"
#include "util/IRIParser.h"
#include "util/Option.h"
#include "util/SharedPtr.h"
#include "util/UnicodeUtil.h"
#include "util/XmlDocument.h"
#include "util/XmlNode.h"
#include "util/XmlParser.h"

namespace orvane::nimbrel::config {

namespace detail {
struct HandlerContext;
struct KnownElement;
}  // namespace detail

/// The parser of configuration documents: walks the root's children in the order of the locales,
/// keeps each and hands it to the handler of its element (W3C Widgets, "Packaging and XML
/// Configuration", and the runtime's extension elements).
///
/// May be used for any number of documents, one after the other. Each parse makes a new record.
/// Three things carry over on purpose: the error text, the IRI that was parsed last, and that some
/// document had a "content" element, after which later documents get no start file.
///
/// It shares its services with the caller and its last record with those who received it. One
/// parser serves one thread at a time. Basic guarantee: when a parse, a step or a handler throws,
/// the parser holds the record as far as it was filled and may be used again.
class NIMBREL_CONFIG_API NimbrelConfigParser : public ConfigParser {
 public:
  /// `userAgentLocales` are language tags, most preferred first, matched byte for byte. Throws
  /// `std::invalid_argument`, naming the argument, for a null service.
  NimbrelConfigParser(const std::vector<std::string>& userAgentLocales,
                      std::shared_ptr<util::XmlParser> xmlParser,
                      std::shared_ptr<util::IRIParser> iriParser,
                      std::shared_ptr<util::IDNConverter> idnConverter,
                      std::shared_ptr<util::UnicodeUtil> unicodeUtil);
  NimbrelConfigParser(const NimbrelConfigParser&) = delete;
  NimbrelConfigParser& operator=(const NimbrelConfigParser&) = delete;
  ~NimbrelConfigParser() override;

  std::shared_ptr<Config> parse(const char* buffer, unsigned int size, const char* url,
                                const char* encoding) override;
  std::shared_ptr<Config> parse(const char* path, const char* encoding) override;

  /// Makes a record of a document that was parsed already; never null. Throws as `parse` does, but
  /// for what reading the XML throws; `std::invalid_argument` "document cannot be NULL" for a null
  /// document.
  ///
  /// `parse` calls it, so an override sees every document. C++ knows no covariance of shared
  /// pointers: an override must return exactly `std::shared_ptr<BasicConfig>`, whatever pointer its
  /// callers keep.
  virtual std::shared_ptr<BasicConfig> process(std::shared_ptr<util::XmlDocument> document,
                                               const std::vector<std::string>& locales);

  /// Gives the parser an observer, or with null takes it away. The parser shares it. Never throws.
  void setObserver(std::shared_ptr<ParseObserver> observer);

  /// Replaces the error text. Strong guarantee: when it throws, the old one stays.
  void setError(const std::string& message);
  /// Replaces the error text; null stands for the empty text.
  void setError(const char* message);
  /// What the last element-level problem was; empty when there was none. No parse clears it.
  [[nodiscard]] const std::string& getErrorText() const noexcept;

  /// @name Steps of the walk
  /// They write the record that the last call of `process` made, and throw `std::logic_error` when
  /// there is none.
  /// @{

  /// Reads the attributes of the root element.
  void processWidgetAttributes(const std::shared_ptr<util::XmlNode>& root);
  /// Completes the record's locales: the document's default when it is new, then "*".
  void processDefaultLocale(const util::Option<std::string>& defaultLocale);
  /// Reads the list of view modes, without repeated ones.
  void processViewMode(const util::Option<std::string>& viewModes);
  /// Appends the root's element children in visiting order: for each locale in turn those whose own
  /// `xml:lang` equals it, for "*" those without one.
  void processUserAgentLocales(std::vector<std::shared_ptr<util::XmlNode>>& nodes);
  /// Keeps each node and calls the handler of its element.
  void processWidgetElements(std::vector<std::shared_ptr<util::XmlNode>> nodes);
  /// @}

  /// @name Handlers of the W3C elements
  /// @{
  /// Writes its part of the record and ignores invalid values silently; single-valued fields keep
  /// the first element that reaches them. Throws `std::logic_error` when there is no record and
  /// `std::invalid_argument` "node cannot be NULL" for a null node. When a service or the observer
  /// throws, the record is as before, but for the name that `processName` stores before the short
  /// name; and `processContent` has seen its element.
  void processName(const std::shared_ptr<util::XmlNode>& node);
  void processDescription(const std::shared_ptr<util::XmlNode>& node);
  void processLicense(const std::shared_ptr<util::XmlNode>& node);
  void processAuthor(const std::shared_ptr<util::XmlNode>& node);
  void processContent(const std::shared_ptr<util::XmlNode>& node);
  void processIcon(const std::shared_ptr<util::XmlNode>& node);
  void processPreference(const std::shared_ptr<util::XmlNode>& node);
  /// As the others; throws `ConfigException` "Feature name is not a valid IRI." for a required one.
  void processFeature(const std::shared_ptr<util::XmlNode>& node);
  void processAccess(const std::shared_ptr<util::XmlNode>& node);
  /// @}

  /// @name Handlers of the extension elements
  /// @{
  /// Visits its element's children in document order and stops at the first malformed one with an
  /// error text; what earlier children wrote stays. False when it stopped, or for a null node, or
  /// without a record; no error is set in the last two cases.
  bool processCookieJar(const std::shared_ptr<util::XmlNode>& node);
  /// As the others; also false when a value was not "token"; such a child does not stop it.
  bool processAuth(const std::shared_ptr<util::XmlNode>& node);
  /// As the others; throws what `ConfigRules::parseNonNegativeInteger` throws for a bad counter.
  bool processNetwork(const std::shared_ptr<util::XmlNode>& node);
  bool processGestures(const std::shared_ptr<util::XmlNode>& node);
  bool processPermissions(const std::shared_ptr<util::XmlNode>& node);
  bool processChrome(const std::shared_ptr<util::XmlNode>& node);
  /// As the others; asks the device for its screen density once. The setting "debug" switches on
  /// the debug lines of the whole process.
  bool processSettings(const std::shared_ptr<util::XmlNode>& node);
  bool processMessaging(const std::shared_ptr<util::XmlNode>& node);
  /// As the others; throws what `ConfigRules::parseNonNegativeInteger` throws for a bad quota.
  bool processLocalResources(const std::shared_ptr<util::XmlNode>& node);
  bool processExport(const std::shared_ptr<util::XmlNode>& node);
  /// @}

 protected:
  /// The first step of `process`: makes an empty record of a document and returns the root. Throws
  /// as `process` does when the root is not `widget` of the W3C namespace.
  std::shared_ptr<util::XmlNode> beginRecord(std::shared_ptr<util::XmlDocument> document,
                                             const std::vector<std::string>& locales);
  /// The record being filled, or last filled; null before the first parse.
  [[nodiscard]] const std::shared_ptr<BasicConfig>& getConfig() const noexcept { return config; }

  /// @name State, for a subclass to inspect
  /// The services and the rules are never null; a subclass that replaces one keeps to that.
  /// @{
  std::vector<std::string> userAgentLocales;         ///< as given to the constructor
  std::shared_ptr<util::XmlParser> xmlParser;        ///< what `parse` reads documents with
  std::shared_ptr<util::IRIParser> iriParser;        ///< decides what is an IRI
  std::shared_ptr<util::IDNConverter> idnConverter;  ///< converts the hosts of access requests
  std::shared_ptr<util::UnicodeUtil> unicodeUtil;    ///< what the rules were built from
  ConfigRules rules;                                 ///< copied into every kept element
  std::shared_ptr<BasicConfig> config;               ///< the record; null before the first parse
  util::Option<util::IRI> idIri;  ///< the IRI that was parsed last, of any element; None before
  bool contentSeen = false;       ///< whether any document had a "content" element
  std::string errorText;          ///< see `getErrorText`

  /// @}

 private:
  std::shared_ptr<ParseObserver> observer_;  // may be null

  [[nodiscard]] BasicConfig& record() const;
  [[nodiscard]] detail::HandlerContext contextOf();
  bool handle(const detail::KnownElement& element, const std::shared_ptr<util::XmlNode>& node);
  bool tryHandle(const detail::KnownElement& element, const std::shared_ptr<util::XmlNode>& node);
};

/// A width or height: None for an absent value, for one that is no number and for 0. Throws only
/// `std::bad_alloc`. For any thread.
[[nodiscard]] NIMBREL_CONFIG_API util::Option<unsigned int> parseWidthOrHeight(
    const ConfigRules& rules, const util::Option<std::string>& value);

}  // namespace orvane::nimbrel::config
