#include "widgetid/LocalizedElementParser.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "config/ConfigParser.h"
#include "config/ConfigRules.h"
#include "config/Namespaces.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlDocument.h"
#include "util/XmlParserLibXml.h"

namespace orvane::zel::config {

std::map<std::string, std::string> LocalizedElementParser::getLocalizedElementMap(
    const char* buffer, unsigned int size, const char* elementName, bool normalize) {
  using nimbrel::util::XmlNode;

  if (elementName == nullptr) {
    throw std::invalid_argument("elementName cannot be NULL");
  }
  const nimbrel::config::ConfigRules rules(std::make_shared<nimbrel::util::UnicodeUtilICU>());
  const std::shared_ptr<nimbrel::util::XmlDocument> document =
      nimbrel::util::XmlParserLibXml().parse(buffer, size, nullptr, nullptr);
  const std::shared_ptr<XmlNode> root = document->getDocumentElement();
  if (root == nullptr) {
    throw nimbrel::config::ConfigParser::ConfigException("Document root is null", 0, 0);
  }

  std::map<std::string, std::string> texts;
  for (std::shared_ptr<XmlNode> child = root->getFirstElementChild(); child != nullptr;
       child = child->getNextElementSibling()) {
    if (!rules.xmlNodeHasName(child, nimbrel::config::W3C_WIDGETS_NAMESPACE, elementName)) {
      continue;
    }
    std::string key = rules.xmlNodeHasExplicitLang(child) ? child->getXmlLang() : "*";
    if (texts.find(key) == texts.end()) {
      texts.emplace(std::move(key), rules.getTextContent(child, normalize).c_str());
    }
  }
  return texts;
}

}  // namespace orvane::zel::config
