#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/Check.h"
#include "check/FindingCode.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
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

ExitStatus explainCode(const std::string& name) {
  std::vector<std::string> known;
  for (const check::CodeDescription& kind : check::codeDescriptions()) {
    if (kind.name == name) {
      writeOutput(explain(kind));
      return EXIT_DONE;
    }
    known.emplace_back(kind.name);
  }
  throw Failure(EXIT_UNUSABLE, "nimbrel-config: there is no code " + quotedWithHint(name, known) +
                                   "; --codes lists them");
}

FindingStyle styleOf(const Options& options) {
  return {options.diff ? "" : options.format, options.summary, isTerminal(),
          isColourWanted(options.colour),     options.quiet,   terminalWidth(STDOUT_FILENO)};
}

/// What came of a file: a report, or why it cannot be read.
struct CheckedFile {
  CheckedDocument document;
  std::optional<DocumentFailure> failure = std::nullopt;
  std::string diff = {};  ///< what would be changed
};

/// Checks the document that `path` stands for, as `readDocument` takes it. A package without a
/// usable one has a finding, too.
CheckedFile checkFile(const std::string& path, const Options& options, std::uint32_t logMask) {
  check::CheckSettings settings = {options.locales, logMask};
  try {
    if (options.fix) {
      check::FixedDocument fixed = fixFile(path, settings, options.recursive);
      return {{path, documentOf(path), std::move(fixed.report), fixed.count}};
    }
    Document document = readDocument(path, options.stdinName, options.recursive);
    settings.package = document.contents();
    if (options.diff) {
      FixedWithDiff result = fixWithDiff(document, settings, isTerminal());
      return {{options.nameOf(path), std::move(document.name), std::move(result.fixed.report),
               result.fixed.count},
              std::nullopt,
              std::move(result.diff)};
    }
    return {{options.nameOf(path), std::move(document.name),
             check::checkDocument(std::move(document.bytes), settings)}};
  } catch (const DocumentFailure& failure) {
    if (failure.status() != EXIT_REJECTED || options.diff) {
      return {{}, failure};
    }
    return {{options.nameOf(path), options.nameOf(path), reportOf(failure)}};
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
            (showsFindings && (!file.document.report->findings().empty() || !file.diff.empty()))) {
          progress.clear();
        }
        writeOutput(file.diff);
        if (file.failure) {
          printer.printUnreadable(name, *file.failure);
        } else {
          printer.print(file.document);
        }
        return printer.counts().all();
      });
  printer.finish();
}

ExitStatus runCheck(Options& options) {
  const bool hasFiles = !options.files.empty() || options.filesFrom;
  if ((options.explain ? 1 : 0) + (options.codes ? 1 : 0) + (hasFiles ? 1 : 0) != 1) {
    failUsage("either FILE, --explain or --codes is required");
  }
  if (options.explain) {
    return explainCode(*options.explain);
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
  options.noProgress |= options.quiet;
  if (isTerminal() && options.format != "text" && !options.summary) {
    options.noProgress = true;  // the output shows it
  }
  options.findFiles(options.fix);
  if (options.fix) {
    options.jobs = 1;  // the first of two names of one file fixes it
  }
  const std::unique_ptr<FindingPrinter> printer = makePrinter(styleOf(options));
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

const Command CHECK_COMMAND = {
    CHECK,     "check",       "Report mistakes in a document, and what to write instead",
    "FILE...", DOCUMENT_HELP, runCheck};

}  // namespace orvane::nimbrel::tools
