#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

// Verbs for tests, and for programs without a test framework, that turn documents into records.
namespace orvane::nimbrel::test {

/// The root element of a whole document; it keeps the document alive.
inline std::shared_ptr<util::XmlNode> rootOf(const std::string& xml) {
  return util::XmlParserLibXml()
      .parse(xml.data(), static_cast<unsigned int>(xml.size()), nullptr, nullptr)
      ->getDocumentElement();
}

/// A widget document; children of the extension namespace have the prefix "tavlo".
inline std::string widget(const std::string& children, const std::string& attributes = "") {
  return std::string("<widget xmlns='") + config::W3C_WIDGETS_NAMESPACE + "' xmlns:tavlo='" +
         config::EXTENSION_NAMESPACE + "' " + attributes + ">" + children + "</widget>";
}

/// A parser on the library's own services that shows its record even after a throw.
class Reader : public config::NimbrelConfigParser {
 public:
  explicit Reader(const std::vector<std::string>& locales = {"en"})
      : NimbrelConfigParser(
            locales, std::make_shared<util::XmlParserLibXml>(), std::make_shared<util::IRIParser>(),
            std::make_shared<util::IDNConverter>(), std::make_shared<util::UnicodeUtilICU>()) {}

  /// Reads a whole document from a buffer of exactly its size, so that an over-read shows.
  std::shared_ptr<config::Config> document(const std::string& xml) {
    const std::unique_ptr<char[]> exact(new char[xml.size()]);
    std::copy(xml.begin(), xml.end(), exact.get());
    return parse(exact.get(), static_cast<unsigned int>(xml.size()), nullptr, nullptr);
  }

  /// Reads a widget document.
  std::shared_ptr<config::Config> read(const std::string& children,
                                       const std::string& attributes = "") {
    return document(widget(children, attributes));
  }

  [[nodiscard]] bool hasRecord() const { return getConfig() != nullptr; }
  [[nodiscard]] config::BasicConfig& record() const { return *getConfig(); }
};

/// The record of one widget document, read by a parser of its own.
inline std::shared_ptr<config::Config> read(const std::string& children,
                                            const std::string& attributes = "",
                                            const std::vector<std::string>& locales = {"en"}) {
  return Reader(locales).read(children, attributes);
}

/// An element of the extension namespace that sets one thing: `<tavlo:asset key='..' value='..'/>`.
/// The values stand in XML as they are.
inline std::string asset(const std::string& key, const std::string& value) {
  return "<tavlo:asset key='" + key + "' value='" + value + "'/>";
}
/// The same in the spelling of other elements: `<tavlo:setting name='..' value='..'/>`.
inline std::string named(const std::string& element, const std::string& name,
                         const std::string& value) {
  return "<tavlo:" + element + " name='" + name + "' value='" + value + "'/>";
}
/// An extension element around its children.
inline std::string extension(const std::string& name, const std::string& children) {
  return "<tavlo:" + name + ">" + children + "</tavlo:" + name + ">";
}

/// A text with everything that it carries: "en/ltr[en/ltr:Chess ][he/rtl:x]".
inline std::string show(const util::LocalizableString& text) {
  static constexpr const char* DIRECTIONS[] = {"ltr", "rtl", "lro", "rlo"};
  std::string shown = text.getLanguageTag() + "/" + DIRECTIONS[text.getDirection()];
  for (const util::LocalizableString::TextNode& run : text.getTextNodes()) {
    shown += "[" + run.languageTag + "/" + DIRECTIONS[run.direction] + ":" + run.text + "]";
  }
  return shown;
}
inline std::string show(const std::string& text) {
  return text;
}
inline std::string show(unsigned int number) {
  return std::to_string(number);
}
/// What an option holds; "-" for None.
template <typename T>
std::string show(const util::Option<T>& option) {
  return option ? show(option.get()) : "-";
}

}  // namespace orvane::nimbrel::test
