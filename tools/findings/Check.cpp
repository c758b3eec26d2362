#include "tools/findings/Check.h"

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "tools/Escape.h"
#include "tools/Failure.h"
#include "tools/Output.h"
#include "tools/findings/FindingSet.h"
#include "tools/input/Input.h"
#include "util/ParseException.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

using config::ConfigParser;
using Locales = std::vector<std::string>;

constexpr std::size_t MAXIMUM_LANGUAGES = 64;

CheckedFinding refusal(std::string reason, std::uint32_t line = 0, std::uint32_t column = 0) {
  CheckedFinding finding;
  finding.code = config::LegacyCode::DOCUMENT_REFUSED;
  finding.line = line;
  finding.column = column;
  finding.reason = std::move(reason);
  return finding;
}

/// One parse of a document, by a parser of its own: parsers remember.
class Run {
 public:
  Run(std::shared_ptr<util::XmlParser> xmlParser, std::shared_ptr<FindingSet> findings)
      : findings_(std::move(findings)),
        parser_({}, std::move(xmlParser), std::make_shared<util::IRIParser>(),
                std::make_shared<util::IDNConverter>(), std::make_shared<util::UnicodeUtilICU>()) {
    parser_.setObserver(findings_);
  }

  template <typename Parse>
  void operator()(Parse parse) {
    bool refused = true;
    try {
      parse(parser_);
      refused = false;
    } catch (const ConfigParser::ConfigException& error) {
      addUntold(error.what(), error.line, error.column);
    } catch (const std::invalid_argument& error) {
      addUntold(error.what(), 0, 0);
    } catch (const std::overflow_error& error) {
      addUntold(error.what(), 0, 0);
    }
    findings_->endRun(refused);
  }

 private:
  /// What was thrown is a finding already, unless something is amiss.
  void addUntold(const char* message, std::uint32_t line, std::uint32_t column) {
    if (!findings_->hasError()) {
      findings_->add(refusal(message, line, column));
    }
  }

  std::shared_ptr<FindingSet> findings_;
  config::NimbrelConfigParser parser_;
};

/// For each user whose findings count the languages.
std::vector<Locales> usersOf(const util::XmlDocument& document, const std::string& name) {
  std::vector<Locales> users;
  std::set<std::string_view> languages = {{}};
  const std::shared_ptr<util::XmlNode> root = document.getDocumentElement();
  for (const util::XmlNode* child = root == nullptr ? nullptr : root->firstElementChild();
       child != nullptr; child = child->nextElementSibling()) {
    const std::string_view language = child->attributeView("lang", config::XML_NAMESPACE);
    if (languages.insert(language).second && users.size() < MAXIMUM_LANGUAGES) {
      users.push_back({std::string(language)});
    }
  }
  if (languages.size() - 1 > MAXIMUM_LANGUAGES) {
    writeError(escape(name) + ": checked for the first " + std::to_string(MAXIMUM_LANGUAGES) +
               " of its " + std::to_string(languages.size() - 1) + " languages");
  }
  users.emplace_back();
  return users;
}

void checkBytes(const CheckedDocument& document, const std::optional<Locales>& locales,
                const std::shared_ptr<FindingSet>& findings) {
  const auto xmlParser = std::make_shared<util::XmlParserLibXml>();
  const auto size = static_cast<unsigned int>(document.bytes.size());
  std::shared_ptr<util::XmlDocument> xml;
  try {
    xml = xmlParser->parse(document.bytes.data(), size, nullptr, nullptr);
  } catch (const ParseException&) {
    // The same once more, by who tells of it.
    Run(xmlParser, findings)([&](config::NimbrelConfigParser& parser) {
      parser.parse(document.bytes.data(), size, nullptr, nullptr);
    });
    return;
  }
  for (const Locales& user :
       locales ? std::vector<Locales>{*locales} : usersOf(*xml, document.name)) {
    Run(xmlParser,
        findings)([&](config::NimbrelConfigParser& parser) { parser.process(xml, user); });
  }
}

}  // namespace

CheckedDocument checkDocument(const std::string& path, const std::optional<Locales>& locales) {
  CheckedDocument checked = {path, {}, {}};
  try {
    Document document = readDocument(path);
    checked.name = std::move(document.name);
    checked.bytes = std::move(*document.bytes);
  } catch (const DocumentFailure& failure) {
    if (failure.status() != EXIT_REJECTED) {
      throw;
    }
    checked.findings = {refusal(failure.problem().reason)};
    return checked;
  }
  const auto findings = std::make_shared<FindingSet>();
  checkBytes(checked, locales, findings);
  checked.findings = findings->take();
  return checked;
}

}  // namespace orvane::nimbrel::tools
