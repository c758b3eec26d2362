#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/Check.h"
#include "check/Kind.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/commands/FileOptions.h"
#include "tools/commands/ForEachFile.h"
#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/fix/FixFile.h"
#include "tools/input/Input.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "util/HostSymbols.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr CommandText TEXT = {"check", "Report mistakes in a document, and what to write instead",
                              "FILE...", DOCUMENT_HELP};

struct Options : FileSettings {
  std::optional<std::vector<std::string>> locales;
  std::string format = "text";
  std::optional<int> density;
  bool strict = false;
  bool codes = false;
  std::optional<std::string> explain;
  Colour colour = Colour::AUTO;
  bool summary = false;
  bool fix = false;
  bool diff = false;
  bool quiet = false;
};

constexpr Option<Options> OPTIONS[] = {
    {{"locale", "TAG",
      "Language tag that the user prefers, best first; may be repeated (default: every user)"},
     [](Options& options, const char* value) {
       options.locales = options.locales.value_or(std::vector<std::string>());
       options.locales->emplace_back(value);
     }},
    {{"format", "FORMAT",
      "Print for a person (text, the default), for a program (json; jsonl: a line a file) or for "
      "code review (sarif)"},
     [](Options& options, const char* value) {
       options.format = oneOf("format", value, "text json jsonl sarif");
     }},
    {{"summary", nullptr, "Print how often each code is found, instead of the findings"},
     [](Options& options, const char* /*value*/) { options.summary = true; }},
    {{"fix", nullptr,
      "Fix in the files what is certain, such as misspelt names, and report what remains"},
     [](Options& options, const char* /*value*/) { options.fix = true; }},
    {{"diff", nullptr, "Print what --fix would change, and change nothing"},
     [](Options& options, const char* /*value*/) { options.diff = true; }},
    DENSITY_OPTION<Options>,
    {{"strict", nullptr, "Exit with 1 for notes too"},
     [](Options& options, const char* /*value*/) { options.strict = true; }},
    {{"explain", "CODE", "Print what a code means, with examples"},
     [](Options& options, const char* value) { options.explain = value; }},
    {{"codes", nullptr, "Print all codes"},
     [](Options& options, const char* /*value*/) { options.codes = true; }},
    RECURSIVE_OPTION<Options>,
    FILES_FROM_OPTION<Options>,
    JOBS_OPTION<Options>,
    NO_PROGRESS_OPTION<Options>,
    {{"quiet", nullptr, "Print neither progress nor the number of findings", 'q'},
     [](Options& options, const char* /*value*/) {
       options.quiet = true;
       options.progress = false;
     }},
    COLOUR_OPTION<Options>,
    STDIN_NAME_OPTION<Options>,
};

void explainCode(const std::string& name) {
  for (const check::Kind& kind : check::kinds()) {
    if (kind.name == name) {
      writeOutput(explain(kind));
      return;
    }
  }
  throw Failure(EXIT_UNUSABLE,
                "nimbrel-config: there is no code \"" + escape(name) + "\"; --codes lists them");
}

std::unique_ptr<FindingPrinter> printerFor(const Options& options) {
  if (options.diff) {
    return silentPrinter();
  }
  if (options.summary) {
    return options.format == "text" ? summaryPrinter()
                                    : summaryJsonPrinter(options.format == "jsonl");
  }
  if (options.format == "json") {
    return jsonPrinter();
  }
  if (options.format == "jsonl") {
    return jsonLinesPrinter();
  }
  return options.format == "sarif" ? sarifPrinter()
                                   : textPrinter({isTerminal(), isColourWanted(options.colour),
                                                  options.quiet, terminalWidth(STDOUT_FILENO)});
}

/// What came of a file: a report, or why it cannot be read.
struct CheckedFile {
  std::string document;  ///< what a person reads as its name
  std::unique_ptr<const check::Report> report;
  std::optional<DocumentFailure> failure;
  std::optional<std::size_t> fixed = std::nullopt;  ///< how many findings were fixed, if any could
  std::string diff = {};                            ///< what would be changed
};

/// Checks the document that `path` stands for, as `readDocument` takes it. A package without a
/// usable one has a finding, too.
CheckedFile checkFile(const std::string& path, const Options& options, std::uint32_t logMask) {
  try {
    if (options.fix) {
      check::FixedDocument fixed = fixFile(path, options.locales, logMask);
      return {path, std::move(fixed.report), std::nullopt, fixed.count};
    }
    Document document = readDocument(path, options.stdinName);
    if (options.diff) {
      FixedWithDiff result = fixWithDiff(document, options.locales, logMask, isTerminal());
      return {std::move(document.name), std::move(result.fixed.report), std::nullopt,
              result.fixed.count, std::move(result.diff)};
    }
    return {std::move(document.name),
            check::checkDocument(std::move(*document.bytes), options.locales, logMask,
                                 document.names()),
            std::nullopt};
  } catch (const DocumentFailure& failure) {
    if (failure.status() != EXIT_REJECTED || options.diff) {
      return {{}, nullptr, failure};
    }
    auto report = std::make_unique<check::Report>("");
    report->reject(failure.problem().reason, failure.problem().line, failure.problem().column);
    return {options.nameOf(path), std::move(report), std::nullopt};
  }
}

/// Checks all files, and prints what is found in their order.
void checkFiles(const Options& options, FindingPrinter& printer) {
  const std::uint32_t logMask = util::logMask();
  const bool showsFindings = isTerminal() && !options.summary;
  forEachFile(
      options, "findings",
      [&](const std::string& path) { return checkFile(path, options, logMask); },
      [&](const std::string& name, const CheckedFile& file, Progress& progress) {
        if (file.failure ||
            (showsFindings && (!file.report->findings().empty() || !file.diff.empty()))) {
          progress.clear();
        }
        writeOutput(file.diff);
        if (file.failure) {
          printer.printUnreadable(name, *file.failure);
        } else {
          printer.print({name, file.document}, *file.report, file.fixed);
        }
        return printer.counts().all();
      });
  printer.finish();
}

ExitStatus runCheck(int argc, char** argv) {
  Options options;
  auto operands = readArguments(argc, argv, TEXT, OPTIONS, options);
  if (!operands) {
    return EXIT_DONE;
  }
  const bool hasFiles = !operands->empty() || options.filesFrom;
  if ((options.explain ? 1 : 0) + (options.codes ? 1 : 0) + (hasFiles ? 1 : 0) != 1) {
    failUsage("either FILE, --explain or --codes is required");
  }
  if (options.explain) {
    explainCode(*options.explain);
    return EXIT_DONE;
  }
  if (options.codes) {
    writeOutput(listCodes());
    return EXIT_DONE;
  }
  if (options.diff && (options.fix || options.summary || options.format != "text")) {
    failUsage("--diff prints what --fix would change, and nothing else");
  }
  if (options.summary && options.format == "sarif") {
    failUsage("--summary has no SARIF");
  }
  if (options.density) {
    answerDensity(*options.density);
  }
  if (isTerminal() && options.format != "text" && !options.summary) {
    options.progress = false;  // the output shows it
  }
  options.findFiles(std::move(*operands));
  if (options.fix) {
    options.jobs = 1;  // the first of two names of one file fixes it
  }
  const std::unique_ptr<FindingPrinter> printer = printerFor(options);
  checkFiles(options, *printer);
  if (printer->files().unreadable != 0) {
    return EXIT_UNUSABLE;
  }
  const FindingCounts& counts = printer->counts();
  const std::size_t decisive = counts.errors + counts.warnings +
                               (options.strict ? counts.notes : 0) +
                               (options.diff ? counts.fixed.value_or(0) : 0);
  return decisive == 0 ? EXIT_DONE : EXIT_REJECTED;
}

}  // namespace

const Command CHECK_COMMAND = {TEXT, runCheck};

}  // namespace orvane::nimbrel::tools
