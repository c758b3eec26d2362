// What start_ours.cpp does, on libxml2 alone: the cost that cannot be undercut.

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "bench/ProcessFacts.h"

int main(int argc, char** argv) {
  try {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadFile(argc > 1 ? argv[1] : "config.xml", nullptr, XML_PARSE_NONET), &xmlFreeDoc);
    if (document == nullptr) {
      throw std::runtime_error("no document");
    }
    const xmlNode* const root = xmlDocGetRootElement(document.get());
    for (const xmlNode* child = root->children; child != nullptr; child = child->next) {
      if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST "name") != 0) {
        const std::unique_ptr<xmlChar, void (*)(void*)> name(xmlNodeGetContent(child), xmlFree);
        std::cout << reinterpret_cast<const char*>(name.get()) << '\n';
        break;
      }
    }
    if (argc > 2) {
      orvane::nimbrel::bench::printProcessFacts();
    }
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
