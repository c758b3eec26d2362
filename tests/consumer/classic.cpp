// Calls every class of the interface as hosts do that were written in the C++ of 2008: pointers of
// <tr1/memory>, which comes first here, both namespaces opened, and operations called for what they
// throw alone.
#include <tr1/memory>
//
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "config/BasicConfig.h"
#include "config/ConfigRules.h"
#include "config/Element.h"
#include "config/NimbrelConfigParser.h"
#include "util/HostUriMunger.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/LocalizableString.h"
#include "util/ParseException.h"
#include "util/PortableFilenameMunger.h"
#include "util/StringUtil.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/LocalizedElementParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParserImpl.h"
#include "widgetid/ProductionWidgetId.h"
#include "widgetid/WidgetIdError.h"

using namespace orvane::nimbrel::util;
using namespace orvane::nimbrel::config;
using orvane::nimbrel::ParseException;
using orvane::zel::util::StringUtil;
namespace zel = orvane::zel;

namespace {

typedef std::tr1::shared_ptr<XmlNode> Node;

int failures = 0;

void expect(bool good, int line) {
  if (!good) {
    std::cout << "failed: classic.cpp:" << line << '\n';
    ++failures;
  }
}

#define EXPECT(condition) expect(condition, __LINE__)
#define EXPECT_THROWN(statement, Exception, text)          \
  try {                                                    \
    statement;                                             \
    expect(false, __LINE__);                               \
  } catch (const Exception& error) {                       \
    expect(std::string(error.what()) == (text), __LINE__); \
  }

const char DOCUMENT[] =
    "<widget xmlns='http://www.w3.org/ns/widgets' id='https://example.org/app/' width='320'"
    " xmlns:o='urn:other' o:a=' x  y '>\n"
    "<name short='Ch' xml:lang='en' dir='rtl'> Chess <o:b>game</o:b></name><name>Schach</name>"
    "<description/><license href='https://example.org/l'>L</license><author "
    "email='a@b'>Ann</author>"
    "<content src='index.html'/><icon src='i.png' width='32'/><preference name='p' value='v'/>"
    "<feature name='urn:f'><param name='n' value='v'/></feature>"
    "<access origin='https://example.org'/><o:other a='1'/></widget>";
const unsigned int SIZE = sizeof(DOCUMENT) - 1;

std::tr1::shared_ptr<UnicodeUtil> unicode() {
  return std::tr1::shared_ptr<UnicodeUtil>(new UnicodeUtilICU());
}

void callOption() {
  using namespace orvane::zel::util;
  using namespace orvane::zel::config;
  Option<std::string> none;
  Option<std::string> text;
  text = std::string("text");
  Option<std::string> copy(text);
  copy = none;
  EXPECT(std::string(copy.c_str()) == "none");
  copy = text;
  EXPECT(copy == std::string("text") && copy == "text" && copy.get() == "text");
  const Option<std::string> second(copy);
  EXPECT(copy == second.get());
  copy.get() = "other";
  copy.reset();
  copy.reset();
  EXPECT_THROWN(copy.get(), std::logic_error, "Attempt to obtain value when there is None.")
  internal::StackAllocator<int> slot;
  slot.deallocate(0);
  slot.deallocate(slot.allocate());
}

void callText() {
  LocalizableString text(unicode(), LocalizableString::LTR, "");
  EXPECT(text.empty());
  text.setDirection(LocalizableString::RTL);
  text.setLanguageTag("en");
  text.append("  a ");
  text.append(" b", LocalizableString::LRO, "de");
  text.append(LocalizableString(text));
  text.normalizeWhitespace();
  text.trim();
  EXPECT(std::string(text.c_str()) == "a b a b");
  EXPECT(LocalizableString::RLO == 3 && LocalizableString::LTR == 0);

  std::string words("  a   b ");
  StringUtil::squeeze(words);
  StringUtil::trim(words);
  const std::vector<std::string> pieces = StringUtil::split(words, ' ');
  EXPECT(pieces.size() == 2 && pieces[1] == "b");
}

void callTree() {
  const XmlParserLibXml parser;
  EXPECT_THROWN(parser.parse("no/such/file", 0), ParseException, error.what())
  try {
    parser.parse("<a>", 3, 0, 0);
    EXPECT(false);
  } catch (const ParseException& error) {
    EXPECT(error.line == 1 && error.column != 0);
  }
  const std::tr1::shared_ptr<XmlDocument> document = parser.parse(DOCUMENT, SIZE, 0, 0);
  const Node root = document->getDocumentElement();
  EXPECT(root->getName() == "widget" && root->getNodeType() == 2 && root->getLineNumber() == 1);
  EXPECT(root->getNamespace() == "http://www.w3.org/ns/widgets" && !root->getParent());
  EXPECT(root->getAttribute("width") == "320" && root->getAttribute("a", "urn:other") == " x  y ");
  const Node name = root->getFirstElementChild();
  const std::vector<std::tr1::shared_ptr<XmlNode> > children = name->getChildren();
  EXPECT(children.size() == 2 && children[0]->getNodeType() == 4);
  EXPECT(children[0]->getContent() == " Chess " && children[1]->getXmlLang() == "en");
  EXPECT(name->getNextElementSibling()->getName() == "name" && name->getParent() == root);

  Option<IRI> iri;
  IRIParser().tryParse("https://u@example.org:8/p?q#f", iri);
  EXPECT(iri.get().scheme == "https" && iri.get().hasUserInfo && iri.get().host == "example.org");
  EXPECT(iri.get().hasHost && iri.get().path == "/p" && iri.get().hasPath && iri.get().port == 8);
  EXPECT(iri.get().userInfo + iri.get().query + iri.get().fragment == "uqf" && iri.get().hasQuery);
  std::string host;
  IDNConverter().tryConvertToASCII("b\xC3\xBC.example", host);
  EXPECT(host == "xn--b-eha.example" && iri.get().hasFragment);

  const ConfigRules rules(unicode());
  EXPECT_THROWN(ConfigRules(std::tr1::shared_ptr<UnicodeUtil>()), std::invalid_argument,
                "unicodeUtil cannot be NULL")
  EXPECT(rules.getSingleAttributeValue(root, "urn:other", "a") == "x y");
  const Option<LocalizableString> shown =
      rules.getSingleDisplayableAttributeValue(name, 0, "short");
  EXPECT(std::string(shown.get().c_str()) == "Ch");
  const LocalizableString text = rules.getTextContent(name, true);
  EXPECT(std::string(text.c_str()) == "Chess game");
  EXPECT(rules.determineDirectionality(name) == LocalizableString::RTL);
  EXPECT(rules.xmlNodeHasName(name, "http://www.w3.org/ns/widgets", "name"));
  EXPECT(rules.xmlNodeHasExplicitLang(name) && rules.xmlNodeHasExplicitLang(name, "en"));
  EXPECT(rules.parseListOfKeywords(" a  b ").size() == 2 && rules.isValidTavloApplicationId("a1"));
  EXPECT_THROWN(rules.parseBoolean(0), std::invalid_argument, "input is null")
  EXPECT_THROWN(rules.parseBoolean("1"), std::invalid_argument, "input is not a valid boolean")
  EXPECT_THROWN(rules.parseNonNegativeInteger(""), std::invalid_argument, "input")
  EXPECT_THROWN(rules.parseNonNegativeInteger("4294967296"), std::overflow_error, "input")

  const Element element(name, rules);
  EXPECT(element.getName() == "name" && element.getNamespace() == root->getNamespace().get());
  EXPECT(std::string(element.getTextContent(true).c_str()) == "Chess game");
  EXPECT(std::string(element.getTextContent().c_str()) == " Chess game");
  EXPECT(element.getSingleAttributeValue("short") == "Ch");
  EXPECT(!element.getSingleAttributeValue("short", "urn:other"));
  EXPECT(!element.getSingleDisplayableAttributeValue("short", "urn:other"));
  EXPECT(!element.getSingleDisplayableAttributeValue("short").get().empty());
  EXPECT_THROWN(Element(Node(), rules), std::invalid_argument, "node cannot be NULL")
}

/// Reads all that a record has, by the types that its interface names.
void readRecord(const Config& config) {
  const Option<Config::Author>& author = config.getAuthor();
  const Option<Config::License>& license = config.getLicense();
  EXPECT(author.get().email == "a@b" && !author.get().href && !author.get().name.empty());
  EXPECT(!license.get().file && license.get().href && !license.get().text.empty());
  const std::vector<Config::Feature>& features = config.getFeatures();
  EXPECT(features.at(0).required && features[0].params.at(0).second == "v");
  const std::vector<Config::Icon>& icons = config.getIcons();
  EXPECT(icons.at(0).src == "i.png" && icons[0].width.get() == 32 && !icons[0].height);
  const Config::StartFile& file = config.getStartFile().get();
  EXPECT(file.src == "index.html" && file.encoding.empty() && file.type.empty());
  const Config::Preference& preference = config.getPreferences().at(0);
  EXPECT(preference.name == "p" && preference.value == "v" && !preference.readonly);
  const Config::AccessRequest& access = config.getAccessRequestList().at(0);
  EXPECT(access.allOrigins == 0 && access.scheme == "https" && access.host == "example.org");
  EXPECT(access.port == 443 && !access.subdomains && access.element->getName() == "access");
  const Option<LocalizableString>& name = config.getName();
  EXPECT(!name.get().empty() && config.getDescription().get().empty() && config.getShortName());
  const Option<std::string>& id = config.getId();
  EXPECT(id == "https://example.org/app/" && config.getWidth().get() == 320 && !config.getHeight());
  EXPECT(!config.getVersion() && config.getWindowModes().empty());
  EXPECT(config.getUserAgentLocales().back() == "*" && !config.getTavloApplicationId());
  const Option<unsigned int>& version = config.getTavloApplicationVersion();
  EXPECT(!version && config.getOrvnAuthMode() == 0 && config.getExports().empty());
  EXPECT(!config.getCookieJarSettings().useAuthCookiesForRegionalStack);
  EXPECT(config.getNetSettings().idleConnectionsTimeout_sec == 25);
  EXPECT(config.getNetSettings().userAgents.empty() &&
         config.getNetSettings().maxConnections == 24);
  EXPECT(!config.getGestureSettings().multi_tap.enabled && config.getAppPermissions().empty());
  EXPECT(config.getGestureSettings().hold.properties == "" && config.getAppSettings().saveContext);
  EXPECT(config.getChromeSettings() == "system" && config.getMessagingPermissions().empty());
  EXPECT(config.getLocalResources().allowHTTPSApplicationManifestCrossDomain == false);
  EXPECT(config.getLocalResources().otherSettings.empty());
  const std::vector<const Element*> found = config.getElements("other", "urn:other");
  EXPECT(found.size() == 1 && found[0]->getSingleAttributeValue("a") == "1");
  EXPECT_THROWN(config.getElements(0, 0), std::invalid_argument, "name")
}

void callParser() {
  std::vector<std::string> locales(1, "en");
  const std::tr1::shared_ptr<XmlParser> xml(new XmlParserLibXml());
  NimbrelConfigParser parser(locales, xml, std::tr1::shared_ptr<IRIParser>(new IRIParser()),
                             std::tr1::shared_ptr<IDNConverter>(new IDNConverter()), unicode());
  const std::tr1::shared_ptr<Config> config = parser.parse(DOCUMENT, SIZE, 0, 0);
  readRecord(*config);
  EXPECT_THROWN(parser.parse(0, 0), std::invalid_argument, "path cannot be NULL")
  try {
    parser.parse("<w/>", 4, 0, 0);
    EXPECT(false);
  } catch (const ConfigParser::ConfigException& error) {
    EXPECT(error.line == 1 && error.column == 0);
  }
  const std::tr1::shared_ptr<XmlDocument> document = xml->parse(DOCUMENT, SIZE, 0, 0);
  const std::tr1::shared_ptr<BasicConfig> own = parser.process(document, locales);
  const std::tr1::shared_ptr<Config> same = parser.process(document, locales);
  EXPECT(own != same && std::tr1::dynamic_pointer_cast<BasicConfig>(same));
  own->document() = document;
  own->elements().clear();
  own->id() = std::string("urn:other");
  EXPECT(own->getId() == "urn:other" && own->name() && own->features().size() == 1);
  BasicConfig copy(*own);
  copy.orvnAuthMode() = 1;
  copy.author() = Config::Author();
  copy.license() = Config::License();
  copy.startFile() = Config::StartFile();
  EXPECT(copy.getAuthor().get().name.empty() && copy.license().get().text.empty());
  Config::Export exported;
  exported.resourcePath = "p";
  copy.exports()["p"] = exported;

  const Node node = document->getDocumentElement()->getFirstElementChild();
  parser.setError(std::string("text"));
  parser.setError("text");
  parser.processName(node);
  parser.processPreference(node);
  EXPECT(parser.processChrome(Node()) == false);
  EXPECT(!parseWidthOrHeight(ConfigRules(unicode()), Option<std::string>()));
}

void callIdentity() {
  const std::tr1::shared_ptr<zel::util::UriMunger> hosts(new zel::util::HostUriMunger());
  const std::tr1::shared_ptr<zel::util::FilenameMunger> names(
      new zel::util::PortableFilenameMunger());
  const std::tr1::shared_ptr<zel::config::WidgetIdParser> uris(
      new zel::config::PelloWidgetIdParser(hosts, names));
  const zel::config::BasicWidgetId id("https://example.org/app/", uris);
  const zel::config::WidgetId& any = id;
  EXPECT(std::string(any.toString()) == "https://example.org/app/");
  EXPECT(std::string(any.toDirectoryName()) == "example.org=2Fapp");
  EXPECT(std::string(any.toAuthority()).find("example.org") == 0);
  EXPECT(std::string(any.topLevelApplicationDataDirectory()) == ".mirelda_sandbox");
  EXPECT_THROWN(uris->deriveWidgetIdAuthority(""), zel::config::WidgetIdError,
                "widgetId argument was empty")
  EXPECT_THROWN(uris->deriveDirectoryName(0), std::invalid_argument, "widgetId argument was NULL.")
  const zel::config::PelloWidgetIdParserImpl impl(hosts, names);
  EXPECT(impl.getDefaultBaseURI() != 0);
  EXPECT(zel::config::PelloWidgetIdParser(hosts, names)
             .createNormalizedWidgetId("http://a.example/", false) == "a.example");
  EXPECT(zel::config::FilenameWidgetIdParser(names).deriveWidgetIdAuthority("my app.wgt") ==
         "my%20app");
  const zel::config::ProductionWidgetId production("store1");
  EXPECT(std::string(production.topLevelApplicationDataDirectory()) == ".mirelda");
  const std::map<std::string, std::string> texts =
      zel::config::LocalizedElementParser::getLocalizedElementMap(DOCUMENT, SIZE, "name", true);
  EXPECT(texts.at("en") == "Chess game" && texts.at("*") == "Schach");
}

}  // namespace

int main() {
  try {
    callOption();
    callText();
    callTree();
    callParser();
    callIdentity();
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
    ++failures;
  }
  std::cout << (failures == 0 ? "classic: ok\n" : "classic: failed\n");
  return failures == 0 ? 0 : 1;
}
