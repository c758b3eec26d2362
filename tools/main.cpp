#include <exception>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "check/NearestName.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr const Command* COMMANDS[] = {&SHOW_COMMAND, &LOCALIZED_COMMAND, &ID_COMMAND,
                                       &CHECK_COMMAND};

std::string help() {
  std::string text =
      "Usage: nimbrel-config COMMAND [OPTION]... [ARGUMENT]...\n\n"
      "Reads the configuration documents of web applications.\n\nCommands:\n";
  for (const Command* command : COMMANDS) {
    const std::string_view name = command->text.name;
    text.append("  ").append(name).append(20 - name.size(), ' ');
    text.append(command->text.summary) += '\n';
  }
  return text +
         "\nOptions:\n"
         "  --help              Print this help, or that of a command, and exit\n"
         "  --version           Print the version and exit\n" +
         EXIT_STATUS_HELP;
}

ExitStatus run(int argc, char** argv) {
  const std::string_view word = argc > 1 ? argv[1] : "";
  for (const Command* command : COMMANDS) {
    if (word == command->text.name) {
      return command->run(argc - 1, argv + 1);
    }
  }
  if (word == "--help" || word == "-h") {
    writeOutput(help());
  } else if (word == "--version") {
    writeOutput(VERSION_LINE);
  } else if (word.empty()) {
    failUsage("a command is required");
  } else {
    check::NearestName meant(word);
    for (const Command* command : COMMANDS) {
      meant.consider(command->text.name);
    }
    const std::string command(meant.get());
    failUsage("there is no command \"" + escape(word) + '"' +
              (command.empty() ? command : " (did you mean \"" + command + "\"?)"));
  }
  return EXIT_DONE;
}

/// The same with failures printed. Throws only what comes of memory that has run out.
ExitStatus runAndReport(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const Failure& failure) {
    writeError(failure.what());
    return failure.status();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    writeError("nimbrel-config: " + escape(error.what()));
  }
  return EXIT_UNUSABLE;
}

}  // namespace
}  // namespace orvane::nimbrel::tools

int main(int argc, char** argv) {
  using namespace orvane::nimbrel::tools;
  secureStandardStreams();
  silenceXml();
  try {
    return runAndReport(argc, argv);
  } catch (...) {
    endWithoutMemory();
  }
}
