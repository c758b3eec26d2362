#include <memory>
#include <stdexcept>
#include <string>

#include "tools/Failure.h"
#include "tools/commands/Command.h"
#include "tools/output/Escape.h"
#include "tools/output/JsonWriter.h"
#include "tools/output/Output.h"
#include "tools/output/TextReport.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/ProductionWidgetId.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::nimbrel::tools {
namespace {

using zel::config::BasicWidgetId;
using zel::config::WidgetId;

using WidgetIdMaker = std::unique_ptr<WidgetId> (*)(const char* identifier);

std::unique_ptr<WidgetId> makeOfIri(const char* identifier) {
  return std::make_unique<BasicWidgetId>(
      identifier, std::make_shared<zel::config::PelloWidgetIdParser>(
                      std::make_shared<zel::util::HostUriMunger>(),
                      std::make_shared<zel::util::PortableFilenameMunger>()));
}

std::unique_ptr<WidgetId> makeOfFilename(const char* identifier) {
  return std::make_unique<BasicWidgetId>(
      identifier, std::make_shared<zel::config::FilenameWidgetIdParser>(
                      std::make_shared<zel::util::PortableFilenameMunger>()));
}

std::unique_ptr<WidgetId> makeOfApplication(const char* identifier) {
  return std::make_unique<zel::config::ProductionWidgetId>(identifier);
}

constexpr struct {
  const char* key;
  const char* (WidgetId::*get)() const;
} NAMES[] = {
    {"string", &WidgetId::toString},
    {"authority", &WidgetId::toAuthority},
    {"directoryName", &WidgetId::toDirectoryName},
    {"topLevelApplicationDataDirectory", &WidgetId::topLevelApplicationDataDirectory},
};

constexpr CommandText TEXT = {"id", "Print the names that an identifier gives a widget",
                              "--iri ID | --filename NAME | --application ID", ""};

struct Settings {
  std::string identifier;
  WidgetIdMaker make = nullptr;
  std::string format = "text";
  Colour colour = Colour::AUTO;
};

template <WidgetIdMaker make>
void setIdentifier(Settings& settings, const char* value) {
  if (settings.make != nullptr) {
    failUsage("more than one identifier");
  }
  settings.identifier = value;
  settings.make = make;
}

constexpr Option<Settings> OPTIONS[] = {
    {{"iri", "ID", "Identifier IRI of a document"}, setIdentifier<makeOfIri>},
    {{"filename", "NAME", "File name of a package"}, setIdentifier<makeOfFilename>},
    {{"application", "ID", "Id given by the application store"}, setIdentifier<makeOfApplication>},
    FORMAT_OPTION<Settings>,
    COLOUR_OPTION<Settings>,
};

void print(const Settings& settings, const WidgetId& id) {
  if (settings.format == "json") {
    JsonWriter json;
    json.beginObject();
    for (const auto& name : NAMES) {
      json.member(name.key, (id.*name.get)());
    }
    json.endObject();
    json.finish();
    return;
  }
  TextReport::print(isColourWanted(settings.colour), [&](TextReport& report) {
    for (const auto& name : NAMES) {
      report.row(name.key, (id.*name.get)());
    }
  });
}

ExitStatus runId(int argc, char** argv) {
  Settings settings;
  const auto operands = readArguments(argc, argv, TEXT, OPTIONS, settings);
  if (!operands) {
    return EXIT_DONE;
  }
  if (!operands->empty()) {
    failUsage("unexpected \"" + escape(operands->front()) + '"');
  }
  if (settings.make == nullptr) {
    failUsage("one of --iri, --filename and --application is required");
  }
  std::unique_ptr<WidgetId> id;
  try {
    id = settings.make(settings.identifier.c_str());
  } catch (const zel::config::WidgetIdError& rejection) {
    throw Failure(EXIT_REJECTED, escape(rejection.what()));
  } catch (const std::invalid_argument& rejection) {
    throw Failure(EXIT_REJECTED, escape(rejection.what()));
  }
  print(settings, *id);
  return EXIT_DONE;
}

}  // namespace

const Command ID_COMMAND = {TEXT, runId};

}  // namespace orvane::nimbrel::tools
