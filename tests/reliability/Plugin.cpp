// A module that a program loads and unloads, and the libraries with it.

#include "config/ConfigParserFactory.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/PelloWidgetIdParser.h"

/// Reads a document and derives names; whether both came out.
extern "C" __attribute__((visibility("default"))) bool useTheLibraries(const char* path) {
  using namespace orvane;
  const auto record = nimbrel::config::createConfigParser({"en"})->parse(path, nullptr);
  const zel::config::PelloWidgetIdParser names(
      std::make_shared<zel::util::HostUriMunger>(),
      std::make_shared<zel::util::PortableFilenameMunger>());
  return record->getName() && names.deriveDirectoryName(record->getId().c_str()) ==
                                  "apps.linea.example=2Ftransit-planner";
}
