#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "config/ConfigParserFactory.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/commands/FileOptions.h"
#include "tools/commands/ForEachFile.h"
#include "tools/commands/UserLocales.h"
#include "tools/html/Page.h"
#include "tools/input/Input.h"
#include "tools/output/Output.h"
#include "tools/record/RecordPrinter.h"
#include "tools/record/RejectedNumber.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr CommandText TEXT = {"show", "Print the record that a document gives", "FILE...",
                              DOCUMENT_HELP};

struct Settings : FileSettings {
  std::optional<std::vector<std::string>> locales;
  std::string format = "text";
  std::optional<std::string> field;
  std::optional<std::string> url;
  std::optional<std::string> encoding;
  std::optional<int> density;
  bool debug = false;
  Colour colour = Colour::AUTO;
};

constexpr Option<Settings> OPTIONS[] = {
    {{"locale", "TAG",
      "Language tag that the user prefers, best first; may be repeated (default: by LANGUAGE and "
      "LANG)"},
     [](Settings& settings, const char* value) {
       settings.locales = settings.locales.value_or(std::vector<std::string>());
       settings.locales->emplace_back(value);
     }},
    {{"format", "FORMAT",
      "Print for a person (text, the default; html: a page of one file, in all its languages) or "
      "for a program (json; jsonl: a line a file)"},
     [](Settings& settings, const char* value) {
       settings.format = oneOf("format", value, "text html json jsonl");
     }},
    {{"field", "NAME",
      "Print this field alone, one line a value; fields are the keys of --format json, such as "
      "\"id\" or \"startFile.src\""},
     [](Settings& settings, const char* value) { settings.field = value; }},
    {{"url", "URL", "Name of the document; nothing is read from there"},
     [](Settings& settings, const char* value) { settings.url = value; }},
    {{"encoding", "NAME", "Encoding, whatever the document says"},
     [](Settings& settings, const char* value) { settings.encoding = value; }},
    DENSITY_OPTION<Settings>,
    {{"debug", nullptr, "Copy the library's log lines to standard error"},
     [](Settings& settings, const char* /*value*/) { settings.debug = true; }},
    RECURSIVE_OPTION<Settings>,
    EXCLUDE_OPTION<Settings>,
    FILES_FROM_OPTION<Settings>,
    JOBS_OPTION<Settings>,
    NO_PROGRESS_OPTION<Settings>,
    COLOUR_OPTION<Settings>,
    STDIN_NAME_OPTION<Settings>,
};

const char* textOrNull(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

std::shared_ptr<config::Config> parseDocument(const Settings& settings, const Document& document,
                                              config::NimbrelConfigParser& parser) {
  const char* encoding = textOrNull(settings.encoding);
  return parsingDocument(document.name, parser, [&] {
    return document.bytes ? parser.parse(document.bytes->data(),
                                         static_cast<unsigned int>(document.bytes->size()),
                                         textOrNull(settings.url), encoding)
                          : parser.parse(document.name.c_str(), encoding);
  });
}

/// What came of a file: a record, or why there is none.
struct ShownFile {
  std::shared_ptr<config::BasicConfig> record;
  std::string errorText;
  std::optional<DocumentFailure> failure;
};

ShownFile showFile(const Settings& settings, const std::string& file,
                   const std::vector<std::string>& locales) {
  // One for each document, as a parser remembers a start file.
  const auto parser = config::createNimbrelConfigParser(locales);
  try {
    // Only a buffer can have another name.
    const Document document = settings.url ? readDocument(file, settings.stdinName)
                                           : findDocument(file, settings.stdinName);
    auto record =
        std::dynamic_pointer_cast<config::BasicConfig>(parseDocument(settings, document, *parser));
    return {std::move(record), parser->getErrorText(), std::nullopt};
  } catch (const DocumentFailure& failure) {
    return {nullptr, {}, failure};
  }
}

ExitStatus showFiles(const Settings& settings) {
  ExitStatus worst = EXIT_DONE;
  std::size_t failures = 0;
  const std::vector<std::string> locales = settings.locales ? *settings.locales : userLocales();
  RecordPrinter printer(
      {settings.format, settings.field, settings.isSeveral(), isColourWanted(settings.colour)});
  forEachFile(
      settings, "without a record",
      [&](const std::string& path) { return showFile(settings, path, locales); },
      [&](const std::string& name, const ShownFile& file, Progress& progress) {
        if (file.failure) {
          progress.clear();
          printer.printFailure(name, *file.failure);
          worst = std::max(worst, file.failure->status());
          ++failures;
        } else {
          printer.print(name, *file.record, file.errorText);
        }
        return failures;
      });
  printer.finish();
  return worst;
}

ExitStatus showPage(const Settings& settings) {
  if (settings.files.size() != 1 || settings.field || settings.encoding) {
    failUsage("--format html takes one FILE, and neither --field nor --encoding");
  }
  return printPage({settings.files.front(), settings.stdinName, settings.url, settings.locales});
}

ExitStatus runShow(int argc, char** argv) {
  Settings settings;
  auto operands = readArguments(argc, argv, TEXT, OPTIONS, settings);
  if (!operands) {
    return EXIT_DONE;
  }
  if (operands->empty() && !settings.filesFrom) {
    failUsage("FILE is required");
  }
  if (settings.field) {
    requireField(*settings.field);
  }
  if (settings.density) {
    answerDensity(*settings.density);
  }
  if (settings.debug) {
    copyLogToStandardError();
    settings.jobs = 1;  // the lines of several documents at a time could not be told apart
  }
  settings.progress = settings.progress && !isTerminal();  // there the records show it
  settings.findFiles(std::move(*operands));
  return settings.format == "html" ? showPage(settings) : showFiles(settings);
}

}  // namespace

const Command SHOW_COMMAND = {TEXT, runShow};

}  // namespace orvane::nimbrel::tools
