#include <map>
#include <memory>
#include <string>

#include "tools/Failure.h"
#include "tools/commands/Command.h"
#include "tools/input/Input.h"
#include "tools/output/JsonWriter.h"
#include "tools/output/Output.h"
#include "tools/output/TextReport.h"
#include "widgetid/LocalizedElementParser.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr CommandText TEXT = {
    "localized", "Print the texts of one element by language; \"*\" is the one without",
    "ELEMENT FILE",
    "ELEMENT Local name of the element, such as \"name\"\n"
    "FILE The document, or a packaged widget or folder that holds it; \"-\" is standard input"};

struct Settings {
  std::string format = "text";
  Colour colour = Colour::AUTO;
  std::string stdinName = STANDARD_INPUT;
  bool raw = false;
};

constexpr Option<Settings> OPTIONS[] = {
    {{"raw", nullptr, "Keep the white space as it is written"},
     [](Settings& settings, const char* /*value*/) { settings.raw = true; }},
    FORMAT_OPTION<Settings>,
    COLOUR_OPTION<Settings>,
    STDIN_NAME_OPTION<Settings>,
};

ExitStatus runLocalized(int argc, char** argv) {
  Settings settings;
  const auto operands = readArguments(argc, argv, TEXT, OPTIONS, settings);
  if (!operands) {
    return EXIT_DONE;
  }
  if (operands->size() != 2) {
    failUsage("ELEMENT and FILE are required");
  }
  const Document document = readDocument(operands->at(1), settings.stdinName);
  const std::map<std::string, std::string> texts = readingDocument(document.name, [&] {
    return zel::config::LocalizedElementParser::getLocalizedElementMap(
        document.bytes->data(), static_cast<unsigned int>(document.bytes->size()),
        operands->at(0).c_str(), !settings.raw);
  });
  if (settings.format == "json") {
    JsonWriter json;
    json.beginObject();
    for (const auto& [language, text] : texts) {
      json.member(language, text);
    }
    json.endObject();
    json.finish();
    return EXIT_DONE;
  }
  TextReport::print(isColourWanted(settings.colour), [&](TextReport& report) {
    for (const auto& [language, text] : texts) {
      report.lines(language, text);
    }
  });
  return EXIT_DONE;
}

}  // namespace

const Command LOCALIZED_COMMAND = {TEXT, runLocalized};

}  // namespace orvane::nimbrel::tools
