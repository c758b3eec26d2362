#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/Check.h"
#include "config/ConfigParserFactory.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/commands/ForEachFile.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/html/Page.h"
#include "tools/input/Input.h"
#include "tools/output/Output.h"
#include "tools/record/RecordPrinter.h"
#include "util/HostSymbols.h"

namespace orvane::nimbrel::tools {
namespace {

const char* textOrNull(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

/// What came of a file: a record, or why there is none.
struct ShownFile {
  std::shared_ptr<config::BasicConfig> record;
  std::string errorText;
  std::optional<DocumentFailure> failure;
};

ShownFile showFile(const Options& options, const std::string& file,
                   const std::vector<std::string>& locales, std::uint32_t logMask) {
  // One for each document, as a parser remembers a start file.
  const auto parser = config::createNimbrelConfigParser(locales);
  std::optional<Document> document;
  try {
    document = readDocument(file, options.stdinName);
    const auto record = readingDocument(document->name, [&] {
      return parser->parse(document->bytes.data(),
                           static_cast<unsigned int>(document->bytes.size()),
                           textOrNull(options.url), textOrNull(options.encoding));
    });
    return {std::dynamic_pointer_cast<config::BasicConfig>(record), parser->getErrorText(),
            std::nullopt};
  } catch (const DocumentFailure& failure) {
    // The check goes by what the document says of its encoding, and has log lines of its own.
    if (!document || options.encoding || options.debug) {
      return {nullptr, {}, failure};
    }
    const auto report = check::checkDocument(std::move(document->bytes), {locales, logMask});
    return {nullptr, {}, explained(failure, document->name, *report)};
  }
}

ExitStatus showFiles(const Options& options) {
  ExitStatus worst = EXIT_DONE;
  std::size_t failures = 0;
  const std::vector<std::string> locales = options.locales ? *options.locales : userLocales();
  const std::uint32_t logMask = util::logMask();
  RecordPrinter printer(
      {options.format, options.field, options.isSeveral(), isColourWanted(options.colour)});
  forEachFile(
      options, "without a record",
      [&](const std::string& path) { return showFile(options, path, locales, logMask); },
      [&](const std::string& name, const ShownFile& file, Progress& progress) {
        if (file.failure) {
          progress.clear();
          printer.printFailure(name, *file.failure);
          worst = std::max(worst, file.failure->status());
          ++failures;
        } else {
          printer.print(name, {*file.record, file.errorText});
        }
        return failures;
      });
  printer.finish();
  return worst;
}

ExitStatus showPage(const Options& options) {
  if (options.files.size() != 1 || options.field || options.encoding) {
    failUsage("--format html takes one FILE, and neither --field nor --encoding");
  }
  return printPage({options.files.front(), options.stdinName, options.url, options.locales});
}

ExitStatus runShow(Options& options) {
  if (options.files.empty() && !options.filesFrom) {
    failUsage("FILE is required");
  }
  if (options.field && !isField(*options.field)) {
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: there is no field " +
                                     quotedWithHint(*options.field, fieldNames()) +
                                     "; the keys of --format json are fields");
  }
  if (options.density) {
    answerDensity(*options.density);
  }
  if (options.debug) {
    copyLogToStandardError();
    options.jobs = 1;  // the lines of several documents at a time could not be told apart
  }
  options.noProgress |= isTerminal();  // there the records show it
  options.findFiles();
  return options.format == "html" ? showPage(options) : showFiles(options);
}

}  // namespace

const Command SHOW_COMMAND = {SHOW,      "show",        "Print the record that a document gives",
                              "FILE...", DOCUMENT_HELP, runShow};

}  // namespace orvane::nimbrel::tools
