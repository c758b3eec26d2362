#include <exception>
#include <memory>
#include <new>
#include <string>

#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/JsonWriter.h"
#include "tools/Output.h"
#include "tools/TextReport.h"
#include "tools/commands/Command.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/ProductionWidgetId.h"

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
  const char* option;
  const char* value;
  const char* help;
  WidgetIdMaker make;
} KINDS[] = {
    {"--iri", "ID", "Identifier IRI of a document", makeOfIri},
    {"--filename", "NAME", "File name of a package", makeOfFilename},
    {"--application", "ID", "Id given by the application store", makeOfApplication},
};

constexpr struct {
  const char* key;
  const char* (WidgetId::*get)() const;
} NAMES[] = {
    {"string", &WidgetId::toString},
    {"authority", &WidgetId::toAuthority},
    {"directoryName", &WidgetId::toDirectoryName},
    {"topLevelApplicationDataDirectory", &WidgetId::topLevelApplicationDataDirectory},
};

struct Options {
  std::string identifier;
  WidgetIdMaker make = nullptr;
  std::string format = "text";
};

ExitStatus runId(const Options& options) {
  std::unique_ptr<WidgetId> id;
  try {
    id = options.make(options.identifier.c_str());
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& refusal) {
    throw Failure(EXIT_REJECTED, escape(refusal.what()));
  }
  if (options.format == "json") {
    JsonWriter json;
    json.beginObject();
    for (const auto& name : NAMES) {
      json.member(name.key, (id.get()->*name.get)());
    }
    json.endObject();
    json.finish();
    return EXIT_DONE;
  }
  TextReport report(isColourWanted());
  for (const auto& name : NAMES) {
    report.row(name.key, (id.get()->*name.get)());
  }
  writeOutput(report.finish());
  return EXIT_DONE;
}

}  // namespace

Command addIdCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app = tool.add_subcommand("id", "Print the names that an identifier gives a widget");
  CLI::Option_group* kinds = app->add_option_group("identifier");
  kinds->require_option(1);
  for (const auto& kind : KINDS) {
    kinds
        ->add_option_function<std::string>(
            kind.option,
            [options, make = kind.make](const std::string& identifier) {
              options->identifier = identifier;
              options->make = make;
            },
            kind.help)
        ->type_name(kind.value);
  }
  addFormatOption(*app, options->format);
  return {app, [options] { return runId(*options); }};
}

}  // namespace orvane::nimbrel::tools
