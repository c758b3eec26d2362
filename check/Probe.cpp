#include "check/Probe.h"

#include <stdexcept>
#include <utility>

#include "check/Kind.h"
#include "check/Vocabulary.h"
#include "check/XmlMessage.h"
#include "config/Namespaces.h"
#include "util/HostSymbols.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/ParseException.h"
#include "util/StringUtil.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::check {

using util::XmlNode;

namespace {

/// A view of the attribute's value in the tree, or a copy where the parser read another text.
std::string_view lasting(const config::Finding& finding, std::string_view written, Report& report) {
  if (finding.value.data() == nullptr) {
    return {};
  }
  return finding.value == written ? written : report.keep(finding.value);
}

/// What is found in the tree, with the languages of the elements in view.
bool isLeftToTree(FindingCode code) noexcept {
  return code == FindingCode::UNKNOWN_ELEMENT || code == FindingCode::REPEATED;
}

/// Sets the log mask of the process when it goes.
class LogMaskGuard {
 public:
  explicit LogMaskGuard(std::uint32_t mask) noexcept : mask_(mask) {}
  LogMaskGuard(const LogMaskGuard&) = delete;
  LogMaskGuard& operator=(const LogMaskGuard&) = delete;
  ~LogMaskGuard() { util::setLogMask(mask_); }

 private:
  std::uint32_t mask_;
};

}  // namespace

class Probe::Listener : public config::ParseObserver {
 public:
  explicit Listener(Report& report) : report_(report) {}

  void onFinding(const config::Finding& finding) override {
    Diagnostic diagnostic;
    diagnostic.code = codeOf(finding.code);
    diagnostic.element = finding.element;
    hasError_ |= kindOf(diagnostic.code).level == Level::ERROR;
    if (finding.element == nullptr || isLeftToTree(diagnostic.code)) {
      return;
    }
    if (diagnostic.code == FindingCode::UNEXPECTED_CHILD ||
        diagnostic.code == FindingCode::MISSING_ATTRIBUTE) {
      stopped_ = finding.element;
    }
    std::string_view written;
    if (finding.attribute != nullptr) {
      const config::AttributeDescription& meant = *finding.attribute;
      diagnostic.attribute =
          meant.isExtension ? report_.keep(displayName(meant.name, meant.isExtension)) : meant.name;
      for (std::size_t i = 0; i < finding.element->attributeCount(); ++i) {
        const XmlNode::Attribute attribute = finding.element->attributeAt(i);
        if (isNamed(attribute, meant)) {
          diagnostic.attributeIndex = static_cast<std::uint32_t>(i);
          written = attribute.value;
        }
      }
    } else if (diagnostic.code == FindingCode::WRONG_ROOT &&
               finding.element->nameView() == config::widgetDescription().name) {
      diagnostic.attribute = "xmlns";
      written = finding.element->namespaceView();
    }
    diagnostic.value = lasting(finding, written, report_);
    report_.add(diagnostic);
  }

  void begin() noexcept {
    hasError_ = false;
    stopped_ = nullptr;
  }
  [[nodiscard]] bool hasError() const noexcept { return hasError_; }
  [[nodiscard]] const XmlNode* stopped() const noexcept { return stopped_; }

 private:
  static bool isNamed(const XmlNode::Attribute& attribute,
                      const config::AttributeDescription& meant) noexcept {
    return attribute.name == meant.name &&
           (meant.isExtension ? isExtension(attribute.namespaceUri)
                              : attribute.namespaceUri.data() == nullptr);
  }

  Report& report_;
  bool hasError_ = false;
  const XmlNode* stopped_ = nullptr;
};

Probe::Probe(Report& report, std::uint32_t logMask)
    : NimbrelConfigParser(
          {}, std::make_shared<util::XmlParserLibXml>(), std::make_shared<util::IRIParser>(),
          std::make_shared<util::IDNConverter>(), std::make_shared<util::UnicodeUtilICU>()),
      report_(report),
      logMask_(logMask),
      listener_(std::make_shared<Listener>(report)) {
  setObserver(listener_);
}

std::shared_ptr<util::XmlDocument> Probe::parseXml() {
  try {
    return xmlParser->parse(report_.document().data(),
                            static_cast<unsigned int>(report_.document().size()), nullptr, nullptr);
  } catch (const ParseException& rejection) {
    const SourceText& source = report_.source();
    const XmlMistake mistake =
        explainXml(source, rejection.what(), rejection.line, rejection.column);
    const bool hasPlace = rejection.line != 0 && source.text().data() != nullptr;
    report_.reject(mistake.sentence, rejection.line, rejection.column,
                   hasPlace ? std::optional(mistake.span) : std::nullopt);
    return nullptr;
  }
}

bool Probe::readRoot(const std::shared_ptr<util::XmlDocument>& document,
                     const std::vector<std::string>& locales) {
  try {
    processWidgetAttributes(beginRecord(document, locales));
    return true;
  } catch (const ConfigException& /*wrongRoot*/) {
    return false;  // its finding is in the report
  }
}

const std::vector<std::string>& Probe::locales() const {
  return std::as_const(*config).getUserAgentLocales();
}

std::vector<std::shared_ptr<XmlNode>> Probe::visited() {
  std::vector<std::shared_ptr<XmlNode>> nodes;
  processUserAgentLocales(nodes);
  return nodes;
}

const XmlNode* Probe::readChild(const std::shared_ptr<XmlNode>& child) {
  const LogMaskGuard guard(logMask_);
  listener_->begin();
  config = std::make_shared<config::BasicConfig>();
  contentSeen = false;
  const auto rejectIfUnknown = [&](const char* message) {
    if (!listener_->hasError()) {  // the finding says it better
      report_.reject(message, child->getLineNumber(), 0);
    }
  };
  try {
    processWidgetElements({child});
  } catch (const ConfigException& error) {
    rejectIfUnknown(error.what());
  } catch (const std::invalid_argument& error) {
    rejectIfUnknown(error.what());
  } catch (const std::overflow_error& error) {
    rejectIfUnknown(error.what());
  }
  return child->namespaceView() == config::EXTENSION_NAMESPACE &&
                 listener_->stopped() != child.get()
             ? listener_->stopped()
             : nullptr;
}

}  // namespace orvane::nimbrel::check
