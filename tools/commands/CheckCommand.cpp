#include <CLI/Config.hpp>
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

struct Options {
  std::optional<std::vector<std::string>> locales;
  std::string format = "text";
  std::optional<int> density;
  bool strict = false;
  bool codes = false;
  std::optional<std::string> explain;
  std::vector<std::string> files;
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

std::unique_ptr<FindingPrinter> printerFor(const std::string& format) {
  if (format == "json") {
    return jsonPrinter();
  }
  return format == "sarif" ? sarifPrinter() : textPrinter({isTerminal(), isColourWanted()});
}

/// Checks the document that `path` stands for, as `readDocument` takes it. A package without a
/// usable one has a finding, too.
void checkFile(const std::string& path, const std::optional<std::vector<std::string>>& locales,
               FindingPrinter& printer) {
  Document document;
  try {
    document = readDocument(path);
  } catch (const DocumentFailure& failure) {
    if (failure.status() != EXIT_REJECTED) {
      throw;
    }
    check::Report report{""};
    report.reject(failure.problem().reason, failure.problem().line, failure.problem().column);
    return printer.print(path, report);
  }
  printer.print(document.name, *check::checkDocument(std::move(*document.bytes), locales));
}

ExitStatus runCheck(const Options& options) {
  if (options.explain) {
    explainCode(*options.explain);
    return EXIT_DONE;
  }
  if (options.codes) {
    writeOutput(listCodes());
    return EXIT_DONE;
  }
  if (options.files.empty()) {
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: FILE is required; --help tells how it is used");
  }
  if (options.density) {
    answerDensity(*options.density);
  }
  const std::unique_ptr<FindingPrinter> printer = printerFor(options.format);
  bool complete = true;
  for (const std::string& file : options.files) {
    try {
      checkFile(file, options.locales, *printer);
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

Command addCheckCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app =
      tool.add_subcommand("check", "Report mistakes in a document, and what to write instead");
  app->add_option_function<std::vector<std::string>>(
         "--locale", [options](const std::vector<std::string>& tags) { options->locales = tags; },
         "Language tag that the user prefers, best first; may be repeated (default: every language "
         "of the document in turn)")
      ->allow_extra_args(false)
      ->type_name("TAG");
  app->add_option("--format", options->format,
                  "Print for a person (text), for a program (json) or for code review (sarif)")
      ->check(CLI::IsMember({"text", "json", "sarif"}))
      ->capture_default_str();
  app->add_option("--density", options->density, "Screen density that the device answers")
      ->type_name("N");
  app->add_flag("--strict", options->strict, "Exit with 1 for notes too");
  CLI::Option* const files = app->add_option("FILE", options->files, DOCUMENT_HELP);
  CLI::Option* const explain =
      app->add_option("--explain", options->explain, "Print what a code means, with examples")
          ->type_name("CODE")
          ->excludes(files);
  app->add_flag("--codes", options->codes, "Print all codes")->excludes(files)->excludes(explain);
  return {app, [options] { return runCheck(*options); }};
}

}  // namespace orvane::nimbrel::tools
