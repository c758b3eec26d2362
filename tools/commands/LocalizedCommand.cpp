#include <map>
#include <memory>
#include <string>

#include "tools/Failure.h"
#include "tools/JsonWriter.h"
#include "tools/Output.h"
#include "tools/TextReport.h"
#include "tools/commands/Command.h"
#include "tools/input/Input.h"
#include "widgetid/LocalizedElementParser.h"

namespace orvane::nimbrel::tools {
namespace {

struct Options {
  std::string element;
  std::string file;
  std::string format = "text";
  bool raw = false;
};

ExitStatus runLocalized(const Options& options) {
  const Document document = readDocument(options.file);
  const std::map<std::string, std::string> texts = readingDocument(document.name, [&] {
    return zel::config::LocalizedElementParser::getLocalizedElementMap(
        document.bytes->data(), static_cast<unsigned int>(document.bytes->size()),
        options.element.c_str(), !options.raw);
  });
  if (options.format == "json") {
    JsonWriter json;
    json.beginObject();
    for (const auto& [language, text] : texts) {
      json.member(language, text);
    }
    json.endObject();
    json.finish();
    return EXIT_DONE;
  }
  TextReport report(isColourWanted());
  for (const auto& [language, text] : texts) {
    report.lines(language, text);
  }
  writeOutput(report.finish());
  return EXIT_DONE;
}

}  // namespace

Command addLocalizedCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app = tool.add_subcommand(
      "localized", "Print the texts of one element by language; \"*\" is the one without");
  app->add_flag("--raw", options->raw, "Keep the white space as it is written");
  addFormatOption(*app, options->format);
  app->add_option("ELEMENT", options->element, "Local name of the element, such as \"name\"")
      ->required();
  app->add_option("FILE", options->file, DOCUMENT_HELP)->required();
  return {app, [options] { return runLocalized(*options); }};
}

}  // namespace orvane::nimbrel::tools
