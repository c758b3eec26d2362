#include <CLI/Config.hpp>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "config/FindingKind.h"
#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/Output.h"
#include "tools/commands/Command.h"
#include "tools/findings/Check.h"
#include "tools/findings/FindingJson.h"
#include "tools/findings/FindingText.h"
#include "tools/findings/Sarif.h"

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
  for (const config::FindingKind& kind : config::findingKinds()) {
    if (kind.name == name) {
      writeOutput(explain(kind));
      return;
    }
  }
  throw Failure(EXIT_UNUSABLE,
                "nimbrel-config: there is no code \"" + escape(name) + "\"; --codes lists them");
}

/// Prints what was found: as text at once, else when all is known.
class Printer {
 public:
  explicit Printer(const Options& options) : options_(options) {}

  void print(CheckedDocument document) {
    counts_.add(document);
    if (options_.format == "text") {
      writeOutput(findingsToText(document, {isTerminal(), isColourWanted()}));
    } else {
      document.bytes.clear();
      document.bytes.shrink_to_fit();
    }
    // Of text the name alone is wanted any more: that there was a document.
    documents_.push_back(std::move(document));
  }

  void finish(bool complete) const {
    if (documents_.empty()) {
      return;
    }
    if (options_.format == "text") {
      writeOutput(countsToText(counts_));
    } else {
      printJson(options_.format == "json" ? findingsToJson(documents_, counts_)
                                          : findingsToSarif(documents_, complete));
    }
  }

  [[nodiscard]] const FindingCounts& counts() const noexcept { return counts_; }

 private:
  const Options& options_;
  FindingCounts counts_;
  std::vector<CheckedDocument> documents_;
};

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
  Printer printer(options);
  bool complete = true;
  for (const std::string& file : options.files) {
    try {
      printer.print(checkDocument(file, options.locales));
    } catch (const OutputFailure&) {
      throw;
    } catch (const Failure& failure) {
      writeError(failure.what());
      complete = false;
    }
  }
  printer.finish(complete);
  if (!complete) {
    return EXIT_UNUSABLE;
  }
  const FindingCounts& counts = printer.counts();
  return counts.errors + counts.warnings + (options.strict ? counts.notes : 0) == 0 ? EXIT_DONE
                                                                                    : EXIT_REJECTED;
}

}  // namespace

Command addCheckCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app = tool.add_subcommand("check", "Tell what of a document is lost, and why");
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
