#include "tools/commands/Arguments.h"

#include <getopt.h>

#include <charconv>
#include <cstring>
#include <string_view>

#include "tools/Failure.h"
#include "tools/commands/Command.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t HELP_COLUMN = 22;
constexpr std::size_t HELP_END = 80;

constexpr OptionText ALWAYS[] = {
    {"help", nullptr, "Print this help and exit"},
    {"version", nullptr, "Print the version and exit"},
};

std::string quoted(std::string_view text) {
  return '"' + escape(text) + '"';
}

/// Appends what stands on the left and, in a column of its own, an explanation.
void appendEntry(std::string& out, const std::string& left, std::string_view help) {
  std::string line = "  " + left;
  while (!help.empty()) {
    if (line.size() >= HELP_COLUMN) {
      out += line + '\n';
      line.clear();
    }
    line.resize(HELP_COLUMN, ' ');
    std::size_t end = HELP_END - HELP_COLUMN;
    if (help.size() > end) {
      end = help.rfind(' ', end);
    }
    line += help.substr(0, end);
    help.remove_prefix(std::min(help.size(), end + 1));
    out += line + '\n';
    line.clear();
  }
}

std::string helpOf(const CommandText& command, const std::vector<OptionText>& options) {
  std::string text = std::string("Usage: nimbrel-config ") + command.name + " [OPTION]...";
  text += *command.operands == '\0' ? "" : std::string(" ") + command.operands;
  text += std::string("\n\n") + command.summary + ".\n";
  const std::string operands = command.operandsHelp;
  text += operands.empty() ? "" : "\n";
  for (std::size_t start = 0; start < operands.size();) {
    const std::size_t end = std::min(operands.find('\n', start), operands.size());
    const std::string line = operands.substr(start, end - start);
    const std::size_t gap = line.find(' ');
    appendEntry(text, line.substr(0, gap), line.substr(gap + 1));
    start = end + 1;
  }
  text += "\nOptions:\n";
  for (const OptionText& option : options) {
    appendEntry(text,
                (option.letter == 0 ? std::string() : std::string("-") + option.letter + ", ") +
                    "--" + option.name +
                    (option.value == nullptr ? "" : std::string(" ") + option.value),
                option.help);
  }
  return text + EXIT_STATUS_HELP;
}

}  // namespace

void failUsage(const std::string& message) {
  throw Failure(EXIT_UNUSABLE, "nimbrel-config: " + message + "; --help tells how it is used");
}

std::optional<std::vector<std::string>> readArguments(
    int argc, char** argv, const CommandText& command, const std::vector<OptionText>& own,
    const std::function<void(std::size_t index, const char* value)>& set) {
  std::vector<OptionText> options = own;
  options.insert(options.end(), std::begin(ALWAYS), std::end(ALWAYS));
  std::vector<::option> table;
  std::string letters = ":h";  // the colon keeps it from printing, and tells what is missing
  for (const OptionText& option : options) {
    if (option.letter != 0) {
      letters += option.letter;
      letters += option.value == nullptr ? "" : ":";
    }
    table.push_back({option.name, option.value == nullptr ? no_argument : required_argument,
                     nullptr, static_cast<int>(table.size()) + 256});
  }
  const int help = static_cast<int>(own.size()) + 256;
  table.push_back({});
  optind = 0;  // begins anew, with what it keeps between calls
  while (true) {
    const int found = ::getopt_long(argc, argv, letters.c_str(), table.data(), nullptr);
    const char* const current = argv[optind - 1];
    if (found == -1) {
      return std::vector<std::string>(argv + optind, argv + argc);
    }
    if (found == 'h' || found == help) {
      writeOutput(helpOf(command, options));
      return std::nullopt;
    }
    if (found == help + 1) {
      writeOutput(VERSION_LINE);
      return std::nullopt;
    }
    if (found == ':') {
      failUsage(quoted(current) + " needs a value");
    }
    if (found == '?' && optopt >= 256) {
      failUsage(quoted(current) + " takes no value");
    }
    if (found == '?') {
      failUsage("unknown option " +
                quoted(optopt == 0 ? current : std::string("-") + static_cast<char>(optopt)));
    }
    for (std::size_t i = 0; i < own.size(); ++i) {
      if (found == static_cast<int>(i) + 256 || found == own[i].letter) {
        set(i, optarg);
      }
    }
  }
}

const char* oneOf(const char* option, const char* value, const char* listed) {
  const std::string_view wanted = value;
  for (std::string_view rest = listed; !rest.empty();) {
    const std::string_view word = rest.substr(0, rest.find(' '));
    if (word == wanted) {
      return value;
    }
    rest.remove_prefix(std::min(rest.size(), word.size() + 1));
  }
  failUsage(std::string("--") + option + ": " + quoted(value) + " is none of: " + listed);
}

int wholeNumber(const char* option, const char* value) {
  int number = 0;
  const char* const end = value + std::strlen(value);
  const auto [last, error] = std::from_chars(value, end, number);
  if (error != std::errc() || last != end || value == end) {
    failUsage(std::string("--") + option + ": " + quoted(value) + " is no number");
  }
  return number;
}

}  // namespace orvane::nimbrel::tools
