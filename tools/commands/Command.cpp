#include "tools/commands/Command.h"

#include <getopt.h>
#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <thread>
#include <type_traits>
#include <variant>

#include "check/Suggestions.h"
#include "tools/input/FileList.h"
#include "tools/output/Escape.h"
#include "tools/output/JsonWriter.h"
#include "tools/output/Output.h"
#include "tools/output/TextReport.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::tools {
namespace {

using zel::util::StringUtil;

/// An option of some commands, and what it sets.
struct OptionRow {
  unsigned int commands;
  const char* name;   // "locale", written "--locale"
  const char* value;  // "TAG"; null for an option without a value
  const char* help;
  std::variant<bool Options::*, std::optional<int> Options::*, std::string Options::*,
               std::optional<std::string> Options::*,
               std::optional<std::vector<std::string>> Options::*>
      target;
  const char* words = "";  // that the value may be; any if empty
  char letter = 0;         // 'r' if it may be written "-r" too
};

// In the order of "--help".
constexpr OptionRow OPTIONS[] = {
    {SHOW, "locale", "TAG",
     "Language tag that the user prefers, best first; may be repeated (default: by LANGUAGE and "
     "LANG)",
     &Options::locales},
    {CHECK, "locale", "TAG",
     "Language tag that the user prefers, best first; may be repeated (default: every user)",
     &Options::locales},
    {SHOW, "format", "FORMAT",
     "Print for a person (text, the default; html: a page of one file, in all its languages) or "
     "for a program (json; jsonl: a line a file)",
     &Options::format, "text html json jsonl"},
    {CHECK, "format", "FORMAT",
     "Print for a person (text, the default), for a program (json; jsonl: a line a file) or for "
     "code review (sarif)",
     &Options::format, "text json jsonl sarif"},
    {CHECK, "summary", nullptr, "Print how often each code is found, instead of the findings",
     &Options::summary},
    {CHECK, "fix", nullptr,
     "Fix in the files what is certain, such as misspelt names, and report what remains",
     &Options::fix},
    {CHECK, "diff", nullptr, "Print what --fix would change, and change nothing", &Options::diff},
    {SHOW, "field", "NAME",
     "Print this field alone, one line a value; fields are the keys of --format json, such as "
     "\"id\" or \"startFile.src\"",
     &Options::field},
    {SHOW, "url", "URL", "Name of the document; nothing is read from there", &Options::url},
    {SHOW, "encoding", "NAME", "Encoding, whatever the document says", &Options::encoding},
    {SHOW | CHECK, "density", "N", "Screen density that the device answers", &Options::density},
    {SHOW, "debug", nullptr, "Copy the library's log lines to standard error", &Options::debug},
    {CHECK, "strict", nullptr, "Exit with 1 for notes too", &Options::strict},
    {CHECK, "explain", "CODE", "Print what a code means, with examples", &Options::explain},
    {CHECK, "codes", nullptr, "Print all codes", &Options::codes},
    {LOCALIZED, "raw", nullptr, "Keep the white space as it is written", &Options::raw},
    {ID, "iri", "ID", "Identifier IRI of a document", &Options::iri},
    {ID, "filename", "NAME", "File name of a package", &Options::filename},
    {ID, "application", "ID", "Id given by the application store", &Options::application},
    {LOCALIZED | ID, "format", "FORMAT",
     "Print for a person (text, the default) or for a program (json)", &Options::format,
     "text json"},
    {SHOW | CHECK, "recursive", nullptr, "Read the config.xml and *.wgt below directories",
     &Options::recursive, "", 'r'},
    {SHOW | CHECK, "exclude", "GLOB",
     "Skip files and directories of such names below directories; may be repeated (default: .git, "
     "node_modules and build)",
     &Options::excluded},
    {SHOW | CHECK, "files-from", "LIST",
     "Read the files that a file (\"-\": standard input) names, one a line or with NUL after each",
     &Options::filesFrom},
    {SHOW | CHECK, "jobs", "N",
     "Read so many files at a time (default: as many as there are processors)", &Options::jobs, "",
     'j'},
    {SHOW | CHECK, "no-progress", nullptr, "Show no progress, which a terminal gets after a second",
     &Options::noProgress},
    {CHECK, "quiet", nullptr, "Print neither progress nor the number of findings", &Options::quiet,
     "", 'q'},
    {SHOW | LOCALIZED | ID | CHECK, "color", "WHEN",
     "Colour text: auto (the default), always or never", &Options::colour, "auto always never"},
    {SHOW | LOCALIZED | CHECK, "stdin-name", "NAME", "What messages call standard input",
     &Options::stdinName},
    {SHOW | LOCALIZED | ID | CHECK | TOOL, "help", nullptr, "Print this help and exit",
     &Options::help, "", 'h'},
    {SHOW | LOCALIZED | ID | CHECK | TOOL, "version", nullptr, "Print the version and exit",
     &Options::version, "", 'V'},
};

constexpr char EXIT_STATUS_HELP[] =
    "\nExit status: 0 done; 1 the document or the identifier was\n"
    "rejected or something found in a check; 2 wrong usage, or\n"
    "something cannot be read or written.\n";

/// Appends what stands on the left and, in a column of its own, an explanation. It fits a narrow
/// terminal.
void appendEntry(std::string& out, std::string line, std::string_view help,
                 std::size_t column = 22) {
  constexpr std::size_t END = 60;
  if (line.size() > column) {
    out += std::exchange(line, "") + '\n';
  }
  while (!help.empty()) {
    line.resize(column, ' ');
    const std::size_t room = END - column;
    const std::size_t end = help.size() > room ? help.rfind(' ', room) : help.size();
    out += line.append(help, 0, end) + '\n';
    line.clear();
    help.remove_prefix(std::min(help.size(), end + 1));
  }
}

std::string helpOf(const Command& command, const std::vector<const OptionRow*>& options) {
  std::string text;
  appendEntry(
      text, "",
      std::string("Usage: nimbrel-config ") + command.name + " [OPTION]... " + command.operands, 0);
  text += '\n';
  appendEntry(text, "", command.summary + std::string("."), 0);
  text += *command.operandsHelp == '\0' ? "" : "\n";
  for (const std::string& operand : StringUtil::split(command.operandsHelp, '\n')) {
    const std::size_t gap = std::min(operand.find(' '), operand.size() - 1);
    appendEntry(text, "  " + operand.substr(0, gap), std::string_view(operand).substr(gap + 1));
  }
  text += "\nOptions:\n";
  for (const OptionRow* option : options) {
    appendEntry(text,
                "  " + (option->letter == 0 ? "" : std::string("-") + option->letter + ", ") +
                    "--" + option->name +
                    (option->value == nullptr ? "" : std::string(" ") + option->value),
                option->help);
  }
  return text + EXIT_STATUS_HELP;
}

int wholeNumber(const OptionRow& option, const char* value) {
  int number = 0;
  const char* const end = value + std::strlen(value);
  const auto [last, error] = std::from_chars(value, end, number);
  if (error != std::errc() || last != end || value == end) {
    failUsage(std::string("--") + option.name + ": \"" + escape(value) + "\" is no number");
  }
  return number;
}

void set(Options& options, const OptionRow& option, const char* value) {
  const std::vector<std::string> words = StringUtil::split(option.words, ' ');
  if (!words.empty() && std::find(words.begin(), words.end(), value) == words.end()) {
    failUsage(std::string("--") + option.name + ": " + quotedWithHint(value, words) +
              " is none of: " + option.words);
  }
  std::visit(
      [&](auto target) {
        auto& member = options.*target;
        using Member = std::decay_t<decltype(member)>;
        if constexpr (std::is_same_v<Member, bool>) {
          member = true;
        } else if constexpr (std::is_same_v<Member, std::optional<int>>) {
          member = wholeNumber(option, value);
        } else if constexpr (std::is_same_v<Member, std::optional<std::vector<std::string>>>) {
          (member ? *member : member.emplace()).emplace_back(value);
        } else {
          member = value;
        }
      },
      option.target);
}

[[noreturn]] void failUnknown(const char* written, const std::vector<const OptionRow*>& options) {
  std::vector<std::string> known;
  known.reserve(options.size());
  for (const OptionRow* option : options) {
    known.push_back(std::string("--") + option->name);
  }
  const std::string_view name = written;
  failUsage("unknown option " + quotedWithHint(name.substr(0, name.find('=')), known));
}

/// Each job has a file open. Half of those that may be open are left to everything else.
int possibleJobs(int wanted) noexcept {
  rlimit limit{};
  return ::getrlimit(RLIMIT_NOFILE, &limit) != 0
             ? wanted
             : static_cast<int>(std::clamp<rlim_t>(limit.rlim_cur / 2, 1,
                                                   static_cast<rlim_t>(std::max(1, wanted))));
}

}  // namespace

void Options::findFiles(bool isForChange) {
  if (jobs && (*jobs < 1 || *jobs > 1024)) {
    failUsage("--jobs takes 1 to 1024");
  }
  const DirectoryRules rules = {
      excluded.value_or(std::vector<std::string>{".git", "node_modules", "build"}), !isForChange};
  files = listFiles(std::move(files), recursive ? &rules : nullptr, filesFrom);
  jobs = possibleJobs(jobs.value_or(static_cast<int>(std::thread::hardware_concurrency())));
  if (std::count(files.begin(), files.end(), STANDARD_INPUT) > 1) {
    jobs = 1;  // the first reads all of it
  }
}

void failUsage(const std::string& message) {
  throw Failure(EXIT_UNUSABLE, "nimbrel-config: " + message + "; --help tells how it is used");
}

std::string quotedWithHint(std::string_view written, const std::vector<std::string>& known) {
  const std::string hint = check::nearestName(written, known, check::Reach::CERTAIN).text;
  return '"' + escape(written) + '"' + (hint.empty() ? "" : " (did you mean \"" + hint + "\"?)");
}

std::optional<Options> readOptions(const Command& command, int argc, char** argv) {
  constexpr int FIRST = 256;  // behind all letters
  std::vector<const OptionRow*> known;
  std::vector<::option> table;
  std::string letters = ":";  // keeps it from printing, and tells what is missing
  for (const OptionRow& option : OPTIONS) {
    if ((option.commands & command.bit) != 0) {
      const bool hasValue = option.value != nullptr;
      letters += option.letter == 0 ? "" : std::string(1, option.letter) + (hasValue ? ":" : "");
      table.push_back({option.name, hasValue ? required_argument : no_argument, nullptr,
                       FIRST + static_cast<int>(known.size())});
      known.push_back(&option);
    }
  }
  table.push_back({});
  Options options;
  optind = 0;  // begins anew, with what it keeps between calls
  while (true) {
    const int found = ::getopt_long(argc, argv, letters.c_str(), table.data(), nullptr);
    const char* const current = argv[optind - 1];
    if (found == -1) {
      options.files.assign(argv + optind, argv + argc);
      if (options.locales) {
        options.locales = tagsOf(*options.locales);
      }
      return options;
    }
    if (found == ':' || (found == '?' && optopt >= FIRST)) {
      failUsage('"' + escape(current) + (found == ':' ? "\" needs a value" : "\" takes no value"));
    }
    if (found == '?') {
      failUnknown(optopt == 0 ? current : (std::string("-") + static_cast<char>(optopt)).c_str(),
                  known);
    }
    const auto option =
        found >= FIRST ? known.begin() + (found - FIRST)
                       : std::find_if(known.begin(), known.end(),
                                      [&](const OptionRow* each) { return found == each->letter; });
    set(options, **option, optarg);
    if (options.help || options.version) {
      writeOutput(options.help ? helpOf(command, known) : "nimbrel-config " NIMBREL_VERSION "\n");
      return std::nullopt;
    }
  }
}

void printTexts(const Options& options,
                const std::vector<std::pair<std::string, std::string>>& texts) {
  if (options.format == "json") {
    JsonWriter json;
    json.object([&] {
      for (const auto& [name, text] : texts) {
        json.member(name, text);
      }
    });
    json.finish();
    return;
  }
  TextReport::print(isColourWanted(options.colour), [&](TextReport& report) {
    for (const auto& [name, text] : texts) {
      report.lines(name, text);
    }
  });
}

}  // namespace orvane::nimbrel::tools
