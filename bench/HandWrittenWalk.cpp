#include "bench/HandWrittenWalk.h"

#include <libxml/parser.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "config/Namespaces.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"

namespace orvane::nimbrel::bench {
namespace {

using Text = std::optional<std::string>;
using Tree = std::shared_ptr<xmlDoc>;

const xmlChar* asXml(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

Text takeText(xmlChar* text) {
  if (text == nullptr) {
    return std::nullopt;
  }
  Text result(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return result;
}

std::string normalized(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (std::isspace(static_cast<unsigned char>(c)) == 0) {
      result.push_back(c);
    } else if (!result.empty() && result.back() != ' ') {
      result.push_back(' ');
    }
  }
  if (!result.empty() && result.back() == ' ') {
    result.pop_back();
  }
  return result;
}

Text property(xmlNode* node, const char* name) {
  Text value = takeText(xmlGetNoNsProp(node, asXml(name)));
  return value ? Text(normalized(*value)) : value;
}

std::string language(xmlNode* node) {
  return takeText(xmlGetNsProp(node, asXml("lang"), XML_XML_NAMESPACE)).value_or("");
}

std::string content(xmlNode* node) {
  return takeText(xmlNodeGetContent(node)).value_or("");
}

bool is(xmlNode* node, const char* name, const std::string& namespaceUri) {
  return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, asXml(name)) != 0 &&
         node->ns != nullptr && xmlStrEqual(node->ns->href, asXml(namespaceUri.c_str())) != 0;
}

std::optional<unsigned int> number(const Text& text) {
  if (!text || text->empty()) {
    return std::nullopt;
  }
  return static_cast<unsigned int>(std::strtoul(text->c_str(), nullptr, 10));
}

struct Displayed {
  std::string text;
  std::string language;
  std::string direction;
};

struct Icon {
  std::string src;
  std::optional<unsigned int> width;
  std::optional<unsigned int> height;
};

struct Preference {
  std::string name;
  Text value;
  bool readonly;
};

struct Feature {
  std::string name;
  bool required;
  std::vector<std::pair<std::string, std::string>> params;
};

struct Access {
  std::string scheme;
  std::string host;
  int port;
  bool subdomains;
};

struct Record {
  Tree tree;
  std::vector<xmlNode*> elements;
  Text id;
  Text version;
  std::optional<unsigned int> width;
  std::optional<unsigned int> height;
  std::vector<std::string> viewModes;
  std::optional<Displayed> name;
  Text shortName;
  std::optional<Displayed> description;
  std::optional<Displayed> author;
  std::optional<Displayed> license;
  Text startFile;
  std::vector<Icon> icons;
  std::vector<Preference> preferences;
  std::vector<Feature> features;
  std::vector<Access> accesses;
  std::map<std::string, std::map<std::string, std::string>> settings;  // by element
  std::set<std::string> exports;
};

class Walk {
 public:
  Walk(Record& record, const std::vector<std::string>& locales)
      : record_(record), locales_(locales) {}

  void run(xmlNode* root) {
    if (!is(root, "widget", config::W3C_WIDGETS_NAMESPACE)) {
      throw std::runtime_error("no widget");
    }
    attributes(root);
    for (const std::string& locale : locales_) {
      for (xmlNode* child = root->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE &&
            language(child) == (locale == "*" ? std::string() : locale)) {
          record_.elements.push_back(child);
          element(child);
        }
      }
    }
  }

 private:
  Text iri(xmlNode* node, const char* name) {
    Text value = property(node, name);
    return value && iriParser_.tryParse(value->c_str(), iri_) ? value : std::nullopt;
  }

  void attributes(xmlNode* root) {
    const Text defaultLocale = property(root, "defaultlocale");
    if (defaultLocale &&
        std::find(locales_.begin(), locales_.end(), *defaultLocale) == locales_.end()) {
      locales_.push_back(*defaultLocale);
    }
    locales_.emplace_back("*");
    record_.id = iri(root, "id");
    record_.version = property(root, "version");
    record_.width = number(property(root, "width"));
    record_.height = number(property(root, "height"));
    std::string modes = property(root, "viewmodes").value_or("");
    while (!modes.empty()) {
      const std::size_t end = std::min(modes.find(' '), modes.size());
      const std::string mode = modes.substr(0, end);
      if (std::find(record_.viewModes.begin(), record_.viewModes.end(), mode) ==
          record_.viewModes.end()) {
        record_.viewModes.push_back(mode);
      }
      modes.erase(0, end + 1);
    }
  }

  static Displayed displayed(xmlNode* node, bool normalize) {
    std::string direction = "ltr";
    for (xmlNode* at = node; at != nullptr && at->type == XML_ELEMENT_NODE; at = at->parent) {
      if (const Text dir = property(at, "dir")) {
        direction = *dir;
        break;
      }
    }
    const std::string text = content(node);
    return {normalize ? normalized(text) : text, takeText(xmlNodeGetLang(node)).value_or(""),
            direction};
  }

  void element(xmlNode* node) {
    const auto w3c = [&](const char* name) {
      return is(node, name, config::W3C_WIDGETS_NAMESPACE);
    };
    if (w3c("name")) {
      if (!record_.name) {
        record_.name = displayed(node, true);
        record_.shortName = property(node, "short");
      }
    } else if (w3c("description")) {
      if (!record_.description) {
        record_.description = displayed(node, false);
      }
    } else if (w3c("license")) {
      if (!record_.license) {
        record_.license = displayed(node, false);
      }
    } else if (w3c("author")) {
      if (!record_.author) {
        record_.author = displayed(node, true);
      }
    } else if (w3c("icon")) {
      icon(node);
    } else if (w3c("preference")) {
      preference(node);
    } else if (w3c("content")) {
      record_.startFile = property(node, "src");
    } else if (w3c("feature")) {
      feature(node);
    } else if (w3c("access")) {
      access(node);
    } else if (is(node, "export", config::EXTENSION_NAMESPACE)) {
      record_.exports.insert(property(node, "resource").value_or(""));
    } else {
      settings(node);
    }
  }

  void icon(xmlNode* node) {
    const Text src = property(node, "src");
    const auto same = [&](const Icon& known) { return known.src == *src; };
    if (src && std::none_of(record_.icons.begin(), record_.icons.end(), same)) {
      record_.icons.push_back(
          {*src, number(property(node, "width")), number(property(node, "height"))});
    }
  }

  void preference(xmlNode* node) {
    const Text name = property(node, "name");
    const auto same = [&](const Preference& known) { return known.name == *name; };
    if (name && std::none_of(record_.preferences.begin(), record_.preferences.end(), same)) {
      record_.preferences.push_back(
          {*name, property(node, "value"), property(node, "readonly") == "true"});
    }
  }

  void feature(xmlNode* node) {
    const Text name = iri(node, "name");
    if (!name) {
      return;
    }
    Feature feature{*name, property(node, "required") != "false", {}};
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
      if (is(child, "param", config::W3C_WIDGETS_NAMESPACE)) {
        feature.params.emplace_back(property(child, "name").value_or(""),
                                    property(child, "value").value_or(""));
      }
    }
    record_.features.push_back(feature);
  }

  void access(xmlNode* node) {
    std::string host;
    if (iri(node, "origin") && idnConverter_.tryConvertToASCII(iri_.get().host.c_str(), host)) {
      record_.accesses.push_back(
          {iri_.get().scheme, host, iri_.get().port, property(node, "subdomains") == "true"});
    }
  }

  void settings(xmlNode* node) {
    auto& settings = record_.settings[reinterpret_cast<const char*>(node->name)];
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) {
        continue;
      }
      const Text key = property(child, "key");
      settings[key ? *key : property(child, "name").value_or("")] =
          property(child, "value").value_or("");
    }
  }

  Record& record_;
  std::vector<std::string> locales_;
  util::IRIParser iriParser_;
  util::IDNConverter idnConverter_;
  util::Option<util::IRI> iri_;
};

Tree parseTree(const std::string& document) {
  const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> context(xmlNewParserCtxt(),
                                                                         xmlFreeParserCtxt);
  Tree tree(xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()),
                              nullptr, nullptr, XML_PARSE_NOENT | XML_PARSE_NONET),
            xmlFreeDoc);
  if (tree == nullptr) {
    throw std::runtime_error("rejected");
  }
  return tree;
}

}  // namespace

std::shared_ptr<void> readTree(const std::string& document) {
  return parseTree(document);
}

std::shared_ptr<void> readByHand(const std::string& document,
                                 const std::vector<std::string>& locales) {
  auto record = std::make_shared<Record>();
  record->tree = parseTree(document);
  Walk(*record, locales).run(xmlDocGetRootElement(record->tree.get()));
  return record;
}

}  // namespace orvane::nimbrel::bench
