#include <algorithm>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "tools/Failure.h"
#include "tools/commands/Command.h"
#include "tools/output/Escape.h"
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

ExitStatus runId(Options& options) {
  if (!options.files.empty()) {
    failUsage("unexpected \"" + escape(options.files.front()) + '"');
  }
  const struct {
    const std::optional<std::string>& identifier;
    std::unique_ptr<WidgetId> (*make)(const char* identifier);
  } makers[] = {{options.iri, makeOfIri},
                {options.filename, makeOfFilename},
                {options.application, makeOfApplication}};
  const auto isGiven = [](const auto& maker) { return maker.identifier.has_value(); };
  if (std::count_if(std::begin(makers), std::end(makers), isGiven) != 1) {
    failUsage("one of --iri, --filename and --application is required");
  }
  const auto& maker = *std::find_if(std::begin(makers), std::end(makers), isGiven);
  std::unique_ptr<WidgetId> id;
  try {
    id = maker.make(maker.identifier->c_str());
  } catch (const zel::config::WidgetIdError& rejection) {
    throw Failure(EXIT_REJECTED, escape(rejection.what()));
  } catch (const std::invalid_argument& rejection) {
    throw Failure(EXIT_REJECTED, escape(rejection.what()));
  }
  printTexts(options,
             {{"string", id->toString()},
              {"authority", id->toAuthority()},
              {"directoryName", id->toDirectoryName()},
              {"topLevelApplicationDataDirectory", id->topLevelApplicationDataDirectory()}});
  return EXIT_DONE;
}

}  // namespace

const Command ID_COMMAND = {ID,
                            "id",
                            "Print the names that an identifier gives a widget",
                            "--iri ID | --filename NAME | --application ID",
                            "",
                            runId};

}  // namespace orvane::nimbrel::tools
