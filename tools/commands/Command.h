#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>

#include "tools/Failure.h"

namespace orvane::nimbrel::tools {

/// One command of the tool.
struct Command {
  CLI::App* app;                    ///< owned by the tool's own app
  std::function<ExitStatus()> run;  ///< does it and prints; throws `Failure`
};

/// Each declares a command and its options under `tool`.
Command addShowCommand(CLI::App& tool);
Command addLocalizedCommand(CLI::App& tool);
Command addIdCommand(CLI::App& tool);
Command addCheckCommand(CLI::App& tool);

/// What "--help" says of a document's argument.
inline constexpr char DOCUMENT_HELP[] =
    "The document, or a packaged widget that holds it; \"-\" is standard input";

/// Declares "--format text|json"; `format` gets the choice and must outlive the parse.
void addFormatOption(CLI::App& command, std::string& format);

}  // namespace orvane::nimbrel::tools
