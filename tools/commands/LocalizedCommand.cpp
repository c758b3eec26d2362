#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "check/Check.h"
#include "config/ElementDescription.h"
#include "tools/Failure.h"
#include "tools/commands/Command.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/input/Input.h"
#include "widgetid/LocalizedElementParser.h"

namespace orvane::nimbrel::tools {
namespace {

/// Ends the run for what is no element with texts.
void requireElement(const std::string& name) {
  std::vector<std::string> known;
  for (const config::ElementDescription* element : config::elementDescriptions()) {
    if (element->textField.data() != nullptr) {
      known.emplace_back(element->name);
    }
  }
  if (std::find(known.begin(), known.end(), name) == known.end()) {
    throw Failure(EXIT_UNUSABLE,
                  "nimbrel-config: there is no element " + quotedWithHint(name, known));
  }
}

std::map<std::string, std::string> textsOf(const std::string& element, Document document,
                                           bool isNormalized) {
  try {
    return readingDocument(document.name, [&] {
      return zel::config::LocalizedElementParser::getLocalizedElementMap(
          document.bytes.data(), static_cast<unsigned int>(document.bytes.size()), element.c_str(),
          isNormalized);
    });
  } catch (const DocumentFailure& failure) {
    throw explained(failure, document.name, *check::checkDocument(std::move(document.bytes)));
  }
}

ExitStatus runLocalized(Options& options) {
  if (options.files.size() != 2) {
    failUsage("ELEMENT and FILE are required");
  }
  const std::string& element = options.files[0];
  const std::map<std::string, std::string> texts =
      textsOf(element, readDocument(options.files[1], options.stdinName), !options.raw);
  if (texts.empty()) {
    requireElement(element);
  }
  printTexts(options, {texts.begin(), texts.end()});
  return EXIT_DONE;
}

}  // namespace

const Command LOCALIZED_COMMAND = {
    LOCALIZED,
    "localized",
    "Print the texts of one element by language; \"*\" is the one without",
    "ELEMENT FILE",
    "ELEMENT Local name of the element, such as \"name\"\n"
    "FILE The document, or a packaged widget or folder that holds it; \"-\" is standard input",
    runLocalized};

}  // namespace orvane::nimbrel::tools
