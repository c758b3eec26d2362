#include "check/Probe.h"

#include <set>
#include <stdexcept>
#include <utility>

#include "check/FindingCode.h"
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
    const FindingCode code = codeOf(finding.code);
    hasError_ |= descriptionOf(code).level == Level::ERROR;
    if (finding.element == nullptr || isLeftToTree(code)) {
      return;
    }
    const XmlNode& element = *finding.element;
    if (code == FindingCode::UNEXPECTED_CHILD || code == FindingCode::MISSING_ATTRIBUTE) {
      stopped_ = &element;
    }
    Diagnostic& row = report_.add(code, &element);
    if (const config::AttributeDescription* const meant = finding.attribute) {
      row.attributeIndex = indexOf(element, meant->name, namespaceOf(*meant));
      row.attribute = report_.keep(displayName(meant->name, meant->isExtension));
      row.value = element.attributeView(meant->name, namespaceOf(*meant));
    } else if (code == FindingCode::WRONG_ROOT &&
               element.nameView() == config::widgetDescription().name) {
      row.attribute = "xmlns";
      row.value = element.namespaceView();
    }
    if (finding.value.data() == nullptr || finding.value != row.value) {
      row.value = finding.value.data() == nullptr ? finding.value : report_.keep(finding.value);
    }
    reported_.emplace(&element, row.attribute);
  }

  void begin() noexcept {
    hasError_ = false;
    stopped_ = nullptr;
    reported_.clear();
  }
  [[nodiscard]] bool hasError() const noexcept { return hasError_; }
  [[nodiscard]] const XmlNode* stopped() const noexcept { return stopped_; }
  [[nodiscard]] bool hasReported(const XmlNode& element, std::string_view attribute) const {
    return reported_.count({&element, attribute}) != 0;
  }

 private:
  Report& report_;
  bool hasError_ = false;
  const XmlNode* stopped_ = nullptr;
  std::set<std::pair<const XmlNode*, std::string_view>> reported_;
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

bool Probe::hasReported(const XmlNode& element, std::string_view attribute) const {
  return listener_->hasReported(element, attribute);
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
