#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>

namespace orvane::nimbrel::tools {

/// One command of the tool.
struct Command {
  CLI::App* app;                     ///< owned by the tool's own app
  std::function<std::string()> run;  ///< what is to be printed; throws `Failure`
};

/// Each declares a command and its options under `tool`.
Command addShowCommand(CLI::App& tool);
Command addLocalizedCommand(CLI::App& tool);
Command addIdCommand(CLI::App& tool);

/// Declares "--format text|json"; `format` gets the choice and must outlive the parse.
void addFormatOption(CLI::App& command, std::string& format);

}  // namespace orvane::nimbrel::tools
