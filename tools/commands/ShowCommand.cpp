#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "config/ConfigParserFactory.h"
#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/JsonWriter.h"
#include "tools/Output.h"
#include "tools/commands/Command.h"
#include "tools/commands/UserLocales.h"
#include "tools/input/Input.h"
#include "tools/record/FieldLines.h"
#include "tools/record/FieldSelector.h"
#include "tools/record/RecordJson.h"
#include "tools/record/RecordText.h"

namespace orvane::nimbrel::tools {
namespace {

struct Options {
  std::vector<std::string> locales;
  bool ownLocales = false;  // given on the command line
  std::string format = "text";
  std::optional<std::string> field;
  std::optional<std::string> url;
  std::optional<std::string> encoding;
  std::optional<int> density;
  bool debug = false;
  std::vector<std::string> files;
};

const char* textOrNull(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

std::shared_ptr<config::Config> parseDocument(const Options& options, const std::string& file,
                                              config::NimbrelConfigParser& parser) {
  const char* encoding = textOrNull(options.encoding);
  // Only a buffer can bear another name.
  const Document document = options.url ? readDocument(file) : findDocument(file);
  return readingDocument(document.name, [&] {
    return document.bytes ? parser.parse(document.bytes->data(),
                                         static_cast<unsigned int>(document.bytes->size()),
                                         textOrNull(options.url), encoding)
                          : parser.parse(file.c_str(), encoding);
  });
}

/// Prints what was asked for of each document; with several, after the name of its file.
class Printer {
 public:
  explicit Printer(const Options& options) : options_(options) {}

  void print(const std::string& file, config::BasicConfig& record, const std::string& errorText) {
    if (options_.format == "json") {
      printJson(file, record, errorText);
    } else if (options_.field) {
      FieldLines lines(isSeveral() ? escape(file) + ':' : "", writeOutput);
      FieldSelector selector(*options_.field, lines);
      recordToJson(selector, record, errorText);
    } else {
      printText(file, recordToText(record, errorText, isColourWanted()));
    }
  }

  void finish() {
    if (options_.format == "json" && isSeveral()) {
      beginList();
      json_.endArray();
      json_.finish();
    }
  }

 private:
  [[nodiscard]] bool isSeveral() const { return options_.files.size() > 1; }

  void beginList() {
    if (std::exchange(first_, false)) {
      json_.beginArray();
    }
  }

  void printJson(const std::string& file, config::BasicConfig& record,
                 const std::string& errorText) {
    if (!isSeveral()) {
      printRecord(record, errorText);
      json_.finish();
      return;
    }
    beginList();
    json_.beginObject();
    json_.member("file", file);
    json_.key(options_.field ? "value" : "record");
    printRecord(record, errorText);
    json_.endObject();
    json_.flush();
  }

  void printRecord(config::BasicConfig& record, const std::string& errorText) {
    if (!options_.field) {
      recordToJson(json_, record, errorText);
      return;
    }
    FieldSelector selector(*options_.field, json_);
    recordToJson(selector, record, errorText);
    if (!selector.isFound()) {
      json_.value(nullptr);
    }
  }

  void printText(const std::string& file, const std::string& report) {
    if (isSeveral()) {
      writeOutput((std::exchange(first_, false) ? "" : "\n") + escape(file) + ":\n\n");
    }
    writeOutput(report);
  }

  const Options& options_;
  bool first_ = true;
  JsonWriter json_;
};

void showFile(const Options& options, const std::string& file, Printer& printer) {
  // One for each document, as a parser remembers a start file.
  const auto parser =
      config::createNimbrelConfigParser(options.ownLocales ? options.locales : userLocales());
  const auto record =
      std::dynamic_pointer_cast<config::BasicConfig>(parseDocument(options, file, *parser));
  printer.print(file, *record, parser->getErrorText());
}

ExitStatus runShow(const Options& options) {
  if (options.field) {
    requireField(*options.field);
  }
  if (options.density) {
    answerDensity(*options.density);
  }
  if (options.debug) {
    copyLogToStandardError();
  }
  ExitStatus worst = EXIT_DONE;
  Printer printer(options);
  for (const std::string& file : options.files) {
    try {
      showFile(options, file, printer);
    } catch (const OutputFailure&) {
      throw;
    } catch (const Failure& failure) {
      writeError(failure.what());
      worst = std::max(worst, failure.status());
    }
  }
  if (worst == EXIT_DONE || options.files.size() > 1) {
    printer.finish();
  }
  return worst;
}

}  // namespace

Command addShowCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app = tool.add_subcommand("show", "Print the record that a document gives");
  app->add_option("--locale", options->locales,
                  "Language tag that the user prefers, best first; may be repeated (default: by "
                  "LANGUAGE and LANG)")
      ->allow_extra_args(false)
      ->type_name("TAG")
      ->each([options](const std::string& /*tag*/) { options->ownLocales = true; });
  addFormatOption(*app, options->format);
  app->add_option("--field", options->field,
                  "Print this field alone, one line a value; fields are the keys of --format json, "
                  "such as \"id\" or \"startFile.src\"")
      ->type_name("NAME");
  app->add_option("--url", options->url, "Name of the document; nothing is read from there");
  app->add_option("--encoding", options->encoding, "Encoding, whatever the document says")
      ->type_name("NAME");
  app->add_option("--density", options->density, "Screen density that the device answers")
      ->type_name("N");
  app->add_flag("--debug", options->debug, "Copy the library's log lines to standard error");
  app->add_option("FILE", options->files, DOCUMENT_HELP)->required();
  return {app, [options] { return runShow(*options); }};
}

}  // namespace orvane::nimbrel::tools
