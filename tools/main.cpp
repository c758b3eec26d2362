#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <exception>
#include <new>
#include <sstream>
#include <string>

#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/Output.h"
#include "tools/commands/Command.h"

namespace orvane::nimbrel::tools {

void addFormatOption(CLI::App& command, std::string& format) {
  command.add_option("--format", format, "Print for a person (text) or for a program (json)")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
}

namespace {

constexpr char VERSION_TEXT[] = "nimbrel-config " NIMBREL_VERSION;

/// Prints what `--help` and `--version` ask for; throws `Failure` for a wrong usage.
void answerParseOutcome(const CLI::App& tool, const CLI::ParseError& outcome) {
  std::ostringstream output;
  std::ostringstream error;
  if (tool.exit(outcome, output, error) == 0) {
    writeOutput(output.str());
    return;
  }
  std::string message = outcome.what();
  if (const auto lineBreak = message.find('\n'); lineBreak != std::string::npos) {
    message.resize(lineBreak);
  }
  throw Failure(EXIT_UNUSABLE,
                "nimbrel-config: " + escape(message) + "; --help tells how it is used");
}

ExitStatus run(int argc, const char* const* argv) {
  CLI::App tool("Reads the configuration documents of web applications.", "nimbrel-config");
  tool.footer(
      "Exit status: 0 done; 1 the document was rejected, the identifier refused or something\n"
      "found in a check; 2 wrong usage, or something cannot be read or written.");
  tool.require_subcommand(1);
  const Command commands[] = {addShowCommand(tool), addLocalizedCommand(tool), addIdCommand(tool),
                              addCheckCommand(tool)};
  tool.set_version_flag("--version", VERSION_TEXT, "Print the version and exit");
  for (const Command& command : commands) {
    command.app->set_version_flag("--version", VERSION_TEXT, "Print the version and exit");
  }
  try {
    tool.parse(argc, argv);
  } catch (const CLI::ParseError& outcome) {
    answerParseOutcome(tool, outcome);
    return EXIT_DONE;
  }
  for (const Command& command : commands) {
    if (command.app->parsed()) {
      return command.run();
    }
  }
  return EXIT_DONE;
}

}  // namespace
}  // namespace orvane::nimbrel::tools

int main(int argc, char** argv) {
  using namespace orvane::nimbrel::tools;
  secureStandardStreams();
  try {
    return run(argc, argv);
  } catch (const Failure& failure) {
    writeError(failure.what());
    return failure.status();
  } catch (const std::bad_alloc&) {
    writeError("nimbrel-config: out of memory");
  } catch (const std::exception& error) {
    writeError("nimbrel-config: " + escape(error.what()));
  }
  return EXIT_UNUSABLE;
}
