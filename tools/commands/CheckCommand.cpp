#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/Check.h"
#include "check/Kind.h"
#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/Output.h"
#include "tools/commands/Command.h"
#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr CommandText TEXT = {"check", "Report mistakes in a document, and what to write instead",
                              "FILE...", DOCUMENT_HELP};

struct Options {
  std::optional<std::vector<std::string>> locales;
  std::string format = "text";
  std::optional<int> density;
  bool strict = false;
  bool codes = false;
  std::optional<std::string> explain;
  Colour colour = Colour::AUTO;
  std::string stdinName = STANDARD_INPUT;
  std::vector<std::string> files;
};

constexpr Option<Options> OPTIONS[] = {
    {{"locale", "TAG",
      "Language tag that the user prefers, best first; may be repeated (default: every user)"},
     [](Options& options, const char* value) {
       options.locales = options.locales.value_or(std::vector<std::string>());
       options.locales->emplace_back(value);
     }},
    {{"format", "FORMAT",
      "Print for a person (text, the default), for a program (json) or for code review (sarif)"},
     [](Options& options, const char* value) {
       options.format = oneOf("format", value, "text json sarif");
     }},
    DENSITY_OPTION<Options>,
    {{"strict", nullptr, "Exit with 1 for notes too"},
     [](Options& options, const char* /*value*/) { options.strict = true; }},
    {{"explain", "CODE", "Print what a code means, with examples"},
     [](Options& options, const char* value) { options.explain = value; }},
    {{"codes", nullptr, "Print all codes"},
     [](Options& options, const char* /*value*/) { options.codes = true; }},
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
  if (options.format == "json") {
    return jsonPrinter();
  }
  return options.format == "sarif" ? sarifPrinter()
                                   : textPrinter({isTerminal(), isColourWanted(options.colour)});
}

/// Checks the document that `path` stands for, as `readDocument` takes it. A package without a
/// usable one has a finding, too.
void checkFile(const std::string& path, const Options& options, FindingPrinter& printer) {
  Document document;
  try {
    document = readDocument(path, options.stdinName);
  } catch (const DocumentFailure& failure) {
    if (failure.status() != EXIT_REJECTED) {
      throw;
    }
    check::Report report{""};
    report.reject(failure.problem().reason, failure.problem().line, failure.problem().column);
    return printer.print(path == STANDARD_INPUT ? options.stdinName : path, report);
  }
  printer.print(document.name, *check::checkDocument(std::move(*document.bytes), options.locales));
}

ExitStatus runCheck(int argc, char** argv) {
  Options options;
  auto operands = readArguments(argc, argv, TEXT, OPTIONS, options);
  if (!operands) {
    return EXIT_DONE;
  }
  options.files = std::move(*operands);
  if ((options.explain ? 1 : 0) + (options.codes ? 1 : 0) + (options.files.empty() ? 0 : 1) != 1) {
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
  if (options.density) {
    answerDensity(*options.density);
  }
  const std::unique_ptr<FindingPrinter> printer = printerFor(options);
  bool complete = true;
  for (const std::string& file : options.files) {
    try {
      checkFile(file, options, *printer);
    } catch (const OutputFailure&) {
      throw;
    } catch (const Failure& failure) {
      writeError(failure.what());
      complete = false;
    }
  }
  printer->finish(complete);
  if (!complete) {
    return EXIT_UNUSABLE;
  }
  const FindingCounts& counts = printer->counts();
  return counts.errors + counts.warnings + (options.strict ? counts.notes : 0) == 0 ? EXIT_DONE
                                                                                    : EXIT_REJECTED;
}

}  // namespace

const Command CHECK_COMMAND = {TEXT, runCheck};

}  // namespace orvane::nimbrel::tools
