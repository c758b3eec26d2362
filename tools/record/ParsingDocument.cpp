#include "tools/record/ParsingDocument.h"

#include <cstdint>
#include <string_view>

#include "config/Namespaces.h"
#include "config/ParseObserver.h"
#include "tools/Failure.h"

namespace orvane::nimbrel::tools {
namespace {

/// Remembers which element has the number that ends a parse: the exception does not say.
struct RejectedNumber : config::ParseObserver {
  std::uint32_t line = 0;
  std::string subject;

  void onFinding(const config::Finding& finding) override {
    if (finding.code != config::FindingCode::NUMBER_REJECTED || finding.element == nullptr) {
      return;
    }
    const util::XmlNode& element = *finding.element;
    const std::string_view key = element.attributeView("key");
    line = finding.line;
    subject = element.namespaceView() == config::EXTENSION_NAMESPACE ? "tavlo:" : "";
    subject += escape(element.nameView()) + " \"" +
               escape(key.data() == nullptr ? element.attributeView("name") : key) + '"';
  }
};

}  // namespace

std::shared_ptr<config::BasicConfig> parsingDocument(
    const std::string& file, config::NimbrelConfigParser& parser,
    const std::function<std::shared_ptr<config::Config>()>& parse) {
  const auto number = std::make_shared<RejectedNumber>();
  parser.setObserver(number);
  try {
    return std::dynamic_pointer_cast<config::BasicConfig>(readingDocument(file, parse));
  } catch (const DocumentFailure& failure) {
    if (number->line == 0 || failure.problem().line != 0) {
      throw;
    }
    throw DocumentFailure(failure.status(), file,
                          {failure.problem().reason, number->line, 0, number->subject});
  }
}

}  // namespace orvane::nimbrel::tools
