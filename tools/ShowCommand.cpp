#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/NimbrelConfigParser.h"
#include "tools/Command.h"
#include "tools/Failure.h"
#include "tools/Host.h"
#include "tools/Input.h"
#include "tools/Output.h"
#include "tools/RecordJson.h"
#include "tools/RecordText.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

struct Options {
  std::vector<std::string> locales;
  std::string format = "text";
  std::optional<std::string> url;
  std::optional<std::string> encoding;
  std::optional<int> density;
  bool debug = false;
  std::string file;
};

const char* textOrNull(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

std::shared_ptr<config::Config> parseDocument(const Options& options,
                                              config::NimbrelConfigParser& parser) {
  const char* encoding = textOrNull(options.encoding);
  if (options.file == STANDARD_INPUT || options.url) {  // only a buffer can bear another name
    const std::string bytes = readAll(options.file);
    return readingDocument(options.file, [&] {
      return parser.parse(bytes.data(), static_cast<unsigned int>(bytes.size()),
                          textOrNull(options.url), encoding);
    });
  }
  requireReadable(options.file);
  return readingDocument(options.file,
                         [&] { return parser.parse(options.file.c_str(), encoding); });
}

std::string runShow(const Options& options) {
  if (options.density) {
    answerDensity(*options.density);
  }
  if (options.debug) {
    copyLogToStandardError();
  }
  // Not the library's factory: its parser does not tell the error text.
  config::NimbrelConfigParser parser(options.locales, std::make_shared<util::XmlParserLibXml>(),
                                     std::make_shared<util::IRIParser>(),
                                     std::make_shared<util::IDNConverter>(),
                                     std::make_shared<util::UnicodeUtilICU>());
  const auto record =
      std::dynamic_pointer_cast<config::BasicConfig>(parseDocument(options, parser));
  return options.format == "json" ? printJson(recordToJson(*record, parser.getErrorText()))
                                  : recordToText(*record, parser.getErrorText(), isColourWanted());
}

}  // namespace

Command addShowCommand(CLI::App& tool) {
  auto options = std::make_shared<Options>();
  CLI::App* app = tool.add_subcommand("show", "Print the record that a document gives");
  app->add_option("--locale", options->locales,
                  "Language tag that the user prefers, best first; may be repeated")
      ->allow_extra_args(false)
      ->type_name("TAG");
  addFormatOption(*app, options->format);
  app->add_option("--url", options->url, "Name of the document; nothing is read from there");
  app->add_option("--encoding", options->encoding, "Encoding, whatever the document says")
      ->type_name("NAME");
  app->add_option("--density", options->density, "Screen density that the device answers")
      ->type_name("N");
  app->add_flag("--debug", options->debug, "Copy the library's log lines to standard error");
  app->add_option("FILE", options->file, "The document; \"-\" reads standard input")->required();
  return {app, [options] { return runShow(*options); }};
}

}  // namespace orvane::nimbrel::tools
