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

using zel::config::WidgetId;

std::unique_ptr<WidgetId> makeId(const Options& options) {
  if (options.application) {
    return std::make_unique<zel::config::ProductionWidgetId>(options.application->c_str());
  }
  const auto munger = std::make_shared<zel::util::PortableFilenameMunger>();
  std::shared_ptr<zel::config::WidgetIdParser> parser;
  if (options.iri) {
    parser = std::make_shared<zel::config::PelloWidgetIdParser>(
        std::make_shared<zel::util::HostUriMunger>(), munger);
  } else {
    parser = std::make_shared<zel::config::FilenameWidgetIdParser>(munger);
  }
  const std::string& identifier = options.iri ? *options.iri : *options.filename;
  return std::make_unique<zel::config::BasicWidgetId>(identifier.c_str(), parser);
}

ExitStatus runId(Options& options) {
  if (!options.files.empty()) {
    failUsage("unexpected \"" + escape(options.files.front()) + '"');
  }
  if ((options.iri ? 1 : 0) + (options.filename ? 1 : 0) + (options.application ? 1 : 0) != 1) {
    failUsage("one of --iri, --filename and --application is required");
  }
  std::unique_ptr<WidgetId> id;
  try {
    id = makeId(options);
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
