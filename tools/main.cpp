#include <algorithm>
#include <exception>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr const Command* COMMANDS[] = {&SHOW_COMMAND, &LOCALIZED_COMMAND, &ID_COMMAND,
                                       &CHECK_COMMAND};

[[noreturn]] void failUnknown(std::string_view word) {
  if (std::error_code error; std::filesystem::exists(word, error)) {
    failUsage('"' + escape(word) + "\" is a file, not a command; use show or check FILE");
  }
  std::vector<std::string> known = {"help"};
  for (const Command* command : COMMANDS) {
    known.emplace_back(command->name);
  }
  failUsage("there is no command " + quotedWithHint(word, known));
}

ExitStatus run(std::vector<char*> words) {
  char help[] = "--help";
  if (words.size() > 1 && std::string_view(words[1]) == "help") {  // as COMMAND --help
    words.erase(words.begin() + 1);
    words.push_back(help);
  }
  const std::string_view name = words.size() > 1 ? words[1] : "";
  std::string list;  // for the help
  for (const Command* command : COMMANDS) {
    if (name == command->name) {
      auto options = readOptions(*command, static_cast<int>(words.size()) - 1, words.data() + 1);
      return options ? command->run(*options) : EXIT_DONE;
    }
    list += std::string(command->name) + ' ' + command->summary + '\n';
  }
  if (name.size() > 1 && name.front() != '-') {
    failUnknown(name);
  }
  const Command tool = {TOOL,
                        "COMMAND",
                        "Reads the configuration documents of web applications",
                        "[ARGUMENT]...",
                        list.append("help Print this help, or that of a command").c_str(),
                        nullptr};
  if (readOptions(tool, static_cast<int>(words.size()), words.data())) {
    failUsage("a command is required");
  }
  return EXIT_DONE;
}

/// The same with failures printed. Throws only what comes of memory that has run out.
ExitStatus runAndReport(int argc, char** argv) {
  try {
    return run({argv, argv + argc});
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
