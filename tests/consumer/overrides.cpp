// Overrides every virtual function of the interface as hosts do that were written in the C++ of
// 2008, and proves that each override is called. "override" stands for the compiler to say when a
// signature is not the interface's; <tr1/memory> and its neighbours come last here.
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "config/BasicConfig.h"
#include "config/Element.h"
#include "config/NimbrelConfigParser.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/LocalizableString.h"
#include "util/UnicodeUtil.h"
#include "util/XmlParserLibXml.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
//
#include <tr1/functional>
#include <tr1/memory>
#include <tr1/unordered_map>

using namespace orvane::nimbrel::util;
using namespace orvane::nimbrel::config;
namespace zel = orvane::zel;

namespace {

std::tr1::unordered_map<std::string, int> calls;

/// Counts a call of an override and passes its result on.
template <typename Result>
Result counted(const char* name, Result&& result) {
  ++calls[name];
  return std::forward<Result>(result);
}

class HostIri : public IRIParser {
 public:
  bool tryParse(char const* text, Option<IRI>& out) const override {
    return counted("tryParse", IRIParser::tryParse(text, out));
  }
};

class HostIdn : public IDNConverter {
 public:
  bool tryConvertToASCII(char const* host, std::string& out) const override {
    return counted("tryConvertToASCII", IDNConverter::tryConvertToASCII(host, out));
  }
};

class HostUnicode : public UnicodeUtil, public std::tr1::enable_shared_from_this<HostUnicode> {};

class HostElement : public Element {
 public:
  HostElement(std::tr1::shared_ptr<XmlNode> itsNode, const ConfigRules& itsRules)
      : Element(itsNode, itsRules) {}
  Option<std::string> getName() const override { return counted("getName", Element::getName()); }
  Option<std::string> getNamespace() const override {
    return counted("getNamespace", Element::getNamespace());
  }
  LocalizableString getTextContent(bool normalize) const override {
    return counted("getTextContent 1", Element::getTextContent(normalize));
  }
  LocalizableString getTextContent() const override {
    return counted("getTextContent 0", Element::getTextContent());
  }
  Option<std::string> getSingleAttributeValue(const char* name,
                                              const char* namespaceUri) const override {
    return counted("value 2", Element::getSingleAttributeValue(name, namespaceUri));
  }
  Option<std::string> getSingleAttributeValue(const char* name) const override {
    return counted("value 1", Element::getSingleAttributeValue(name));
  }
  Option<LocalizableString> getSingleDisplayableAttributeValue(
      const char* name, const char* namespaceUri) const override {
    return counted("displayable 2",
                   Element::getSingleDisplayableAttributeValue(name, namespaceUri));
  }
  Option<LocalizableString> getSingleDisplayableAttributeValue(const char* name) const override {
    return counted("displayable 1", Element::getSingleDisplayableAttributeValue(name));
  }
};

class HostConfig : public BasicConfig {
 public:
  ~HostConfig() override { ++calls["~HostConfig"]; }
  const Option<std::string>& getId() const override {
    return counted("getId", BasicConfig::getId());
  }
  std::vector<const Element*> getElements(const char* name, const char* space) const override {
    return counted("getElements", BasicConfig::getElements(name, space));
  }
  Option<std::string>& id() override { return counted("id", BasicConfig::id()); }
  std::vector<Feature>& features() override { return counted("features", BasicConfig::features()); }
};

class HostParser : public NimbrelConfigParser {
 public:
  HostParser()
      : NimbrelConfigParser(std::vector<std::string>(1, "en"),
                            std::tr1::shared_ptr<XmlParser>(new XmlParserLibXml()),
                            std::tr1::shared_ptr<IRIParser>(new HostIri()),
                            std::tr1::shared_ptr<IDNConverter>(new HostIdn()),
                            std::tr1::shared_ptr<UnicodeUtil>(new HostUnicode())) {}

  std::tr1::shared_ptr<Config> parse(const char* buffer, unsigned int size, const char* url,
                                     const char* encoding) override {
    return counted("parse 4", NimbrelConfigParser::parse(buffer, size, url, encoding));
  }
  std::tr1::shared_ptr<Config> parse(const char* path, const char* encoding) override {
    ++calls["parse 2"];
    return NimbrelConfigParser::parse(path, encoding);
  }
  std::tr1::shared_ptr<BasicConfig> process(std::tr1::shared_ptr<XmlDocument> document,
                                            const std::vector<std::string>& locales) override {
    return counted("process", NimbrelConfigParser::process(document, locales));
  }

  /// Whether the state of the parser is there, by its names and in its order.
  bool showsItsState() const {
    const void* const members[] = {&userAgentLocales, &xmlParser, &iriParser, &idnConverter,
                                   &unicodeUtil,      &rules,     &config,    &idIri,
                                   &contentSeen,      &errorText};
    bool good = userAgentLocales.front() == "en" && xmlParser && iriParser && idnConverter &&
                unicodeUtil && contentSeen && idIri.get().host == "example.org" &&
                config->getId() == "https://example.org/" &&
                errorText.find("unknown") != errorText.npos;
    for (const void* const* member = members + 1; member != members + 10; ++member) {
      good = good && member[-1] < member[0];
    }
    return good;
  }
  const ConfigRules& getRules() const { return rules; }
};

/// Another parser of the host's own.
class EmptyParser : public ConfigParser {
 public:
  std::tr1::shared_ptr<Config> parse(const char*, unsigned int, const char*, const char*) override {
    return std::tr1::shared_ptr<Config>(new HostConfig());
  }
  std::tr1::shared_ptr<Config> parse(const char*, const char* encoding) override {
    return parse(0, 0, 0, encoding);
  }
};

class HostHosts : public zel::util::UriMunger {
 public:
  std::string munge(char const* host) override {
    return counted("munge host", "h-" + (host + std::string()));
  }
};

class HostNames : public zel::util::FilenameMunger {
 public:
  void munge(std::string& name) override { counted("munge name", name) += ".d"; }
};

class HostUris : public zel::config::PelloWidgetIdParser {
 public:
  HostUris()
      : PelloWidgetIdParser(std::tr1::shared_ptr<zel::util::UriMunger>(new HostHosts()),
                            std::tr1::shared_ptr<zel::util::FilenameMunger>(new HostNames())) {}
  std::string createNormalizedWidgetId(char const* widgetId, bool mungeHost) const override {
    return counted("normalize", PelloWidgetIdParser::createNormalizedWidgetId(widgetId, mungeHost));
  }
};

class HostIds : public zel::config::WidgetIdParser {
 public:
  std::string deriveWidgetIdAuthority(char const* widgetId) const override {
    return counted("authority", std::string(widgetId));
  }
  std::string deriveDirectoryName(char const* widgetId) const override {
    return counted("directory", std::string(widgetId));
  }
};

class HostId : public zel::config::WidgetId {
 public:
  char const* toString() const override { return "1"; }
  char const* toAuthority() const override { return "2"; }
  char const* toDirectoryName() const override { return "3"; }
  char const* topLevelApplicationDataDirectory() const override { return "4"; }
};

bool useParsers() {
  const std::string document =
      "<widget xmlns='http://www.w3.org/ns/widgets' id='https://example.org/'><content/>"
      "<name a='1'>n</name><access origin='http://example.org'/><other/></widget>";
  HostParser parser;
  const std::tr1::shared_ptr<Config> record = static_cast<ConfigParser&>(parser).parse(
      document.data(), static_cast<unsigned int>(document.size()), 0, 0);
  try {
    static_cast<ConfigParser&>(parser).parse("no/such/file", 0);
    return false;
  } catch (const ConfigParser::ConfigException&) {
  }
  const std::tr1::weak_ptr<Config> watched(record);
  const std::tr1::shared_ptr<BasicConfig> basic =
      std::tr1::static_pointer_cast<BasicConfig>(watched.lock());
  bool good = parser.showsItsState() && std::tr1::const_pointer_cast<const Config>(record) == basic;

  const HostElement host(
      basic->document()->getDocumentElement()->getFirstElementChild()->getNextElementSibling(),
      parser.getRules());
  const std::tr1::shared_ptr<Element> element = std::tr1::make_shared<HostElement>(host);
  good = good && element->getName() == "name" && element->getNamespace().get().size() > 9;
  good = good && !element->getTextContent().empty() && !element->getTextContent(true).empty();
  good = good && element->getSingleAttributeValue("a") == "1";
  good = good && !element->getSingleDisplayableAttributeValue("a").get().empty();
  // The short forms ask the long ones, the overrides of a subclass too.
  good = good && calls["value 2"] == 1 && calls["displayable 2"] == 1;

  EmptyParser empty;
  const std::tr1::shared_ptr<BasicConfig> filled =
      std::tr1::dynamic_pointer_cast<BasicConfig>(empty.parse("", 0));
  filled->id() = std::string("x");
  filled->features().clear();
  const Config& reader = *filled;
  return good && reader.getId() == "x" && reader.getElements("a", 0).empty();
}

bool useIdentities() {
  const HostUris uris;
  const zel::config::WidgetIdParser& parser = uris;
  const std::tr1::function<std::string(char const*)> directory = std::tr1::bind(
      &zel::config::WidgetIdParser::deriveDirectoryName, &parser, std::tr1::placeholders::_1);
  const zel::config::BasicWidgetId id(
      "id", std::tr1::shared_ptr<zel::config::WidgetIdParser>(new HostIds()));
  const HostId own;
  const zel::config::WidgetId& any = own;
  return directory("http://a.example/p") == "h-a.example/p.d" &&
         parser.deriveWidgetIdAuthority("http://a.example/") == "a.example.d" &&
         std::string(id.toDirectoryName()) == "id" &&
         std::string(any.toString()) + any.toAuthority() + any.toDirectoryName() +
                 any.topLevelApplicationDataDirectory() ==
             "1234";
}

}  // namespace

int main() {
  bool good = useParsers();
  good = useIdentities() && good;
  const char* const expected[] = {
      "tryParse",  "tryConvertToASCII", "getName",     "getNamespace", "getTextContent 1",
      "parse 2",   "getTextContent 0",  "value 2",     "value 1",      "displayable 2",
      "getId",     "displayable 1",     "~HostConfig", "getElements",  "id",
      "features",  "parse 4",           "process",     "munge host",   "munge name",
      "normalize", "authority",         "directory"};
  for (std::size_t i = 0; i < sizeof expected / sizeof *expected; ++i) {
    if (calls[expected[i]] == 0) {
      std::cout << "never called: " << expected[i] << '\n';
      good = false;
    }
  }
  std::cout << (good ? "overrides: ok\n" : "overrides: failed\n");
  return good ? 0 : 1;
}
