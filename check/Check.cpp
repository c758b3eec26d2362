#include "check/Check.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "check/PackageRules.h"
#include "check/RepetitionRules.h"
#include "check/Suggestions.h"
#include "check/TreeRules.h"
#include "check/Vocabulary.h"
#include "check/XmlMistake.h"
#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "util/HostSymbols.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/ParseException.h"
#include "util/StringUtil.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::check {
namespace {

using util::XmlNode;
using Nodes = std::vector<std::shared_ptr<XmlNode>>;

/// No user asks for it: it stands for elements without a language.
constexpr std::string_view ANY_LOCALE = "*";

std::string_view languageOf(const XmlNode& element) noexcept {
  return element.attributeView("lang", config::XML_NAMESPACE);
}

/// Sets the log mask of the process when it goes.
struct LogMaskGuard {
  std::uint32_t mask;

  ~LogMaskGuard() { util::setLogMask(mask); }
};

/// Asks the parser for its decisions on each part of a document by itself: on the attributes of the
/// root, and on each of its children alone. So each is judged whatever its language, after a faulty
/// one too, and by the rules that a device applies.
class Checker : config::NimbrelConfigParser, config::ParseObserver {
 public:
  Checker(Report& report, const CheckSettings& settings)
      : NimbrelConfigParser(
            {}, std::make_shared<util::XmlParserLibXml>(), std::make_shared<util::IRIParser>(),
            std::make_shared<util::IDNConverter>(), std::make_shared<util::UnicodeUtilICU>()),
        report_(report),
        settings_(settings),
        rules_(settings.package.has_value(), report) {
    setObserver({std::shared_ptr<void>(), this});  // shares nothing
    if (settings.package) {
      package_.emplace(*settings.package, report).checkContents();
    }
  }

  /// Returns the document; null when it is rejected.
  std::shared_ptr<util::XmlDocument> check() {
    std::shared_ptr<util::XmlDocument> document = parseXml();
    if (document != nullptr && readRoot(document)) {
      const XmlNode& root = *document->getDocumentElement();
      rules_.checkRoot(root);
      if (package_) {
        package_->checkRoot(root, settings_.locales ? &locales() : nullptr);
      }
      settings_.locales ? checkForUser(root) : checkForAnyUser(root);
    }
    return document;
  }

 private:
  void onFinding(const config::Finding& finding) override {
    const FindingCode code = codeOf(finding.code);
    hasError_ |= descriptionOf(code).level == Level::ERROR;
    // These two codes are found in the tree, with the languages of the elements in view.
    if (finding.element == nullptr || code == FindingCode::UNKNOWN_ELEMENT ||
        code == FindingCode::REPEATED) {
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
    report_.noteReported(row);
  }

  std::shared_ptr<util::XmlDocument> parseXml() {
    try {
      return xmlParser->parse(report_.document().data(),
                              static_cast<unsigned int>(report_.document().size()), nullptr,
                              nullptr);
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

  /// Reads the attributes of the root. False when the root is wrong.
  bool readRoot(const std::shared_ptr<util::XmlDocument>& document) {
    try {
      processWidgetAttributes(
          beginRecord(document, settings_.locales.value_or(std::vector<std::string>())));
      return true;
    } catch (const ConfigException& /*wrongRoot*/) {
      return false;  // its finding is in the report
    }
  }

  /// The languages of the user and the default one of the document, in the order of preference.
  [[nodiscard]] const std::vector<std::string>& locales() const {
    return std::as_const(*config).getUserAgentLocales();
  }

  /// Reads a child of the root. The child of it at which reading stopped; null when none did.
  const XmlNode* readChild(const std::shared_ptr<XmlNode>& child) {
    const LogMaskGuard guard = {settings_.logMask};
    hasError_ = false;
    stopped_ = nullptr;
    config = std::make_shared<config::BasicConfig>();
    contentSeen = false;
    const auto rejectIfUnknown = [&](const std::exception& error) {
      if (!hasError_) {  // the finding says it better
        report_.reject(error.what(), child->getLineNumber(), 0);
      }
    };
    try {
      processWidgetElements({child});
    } catch (const ConfigException& error) {
      rejectIfUnknown(error);
    } catch (const std::invalid_argument& error) {
      rejectIfUnknown(error);
    } catch (const std::overflow_error& error) {
      rejectIfUnknown(error);
    }
    return isExtension(child->namespaceView()) && stopped_ != child.get() ? stopped_ : nullptr;
  }

  /// Checks children of the root in this order.
  void checkChildren(const Nodes& children, RepetitionRules& repetitions) {
    for (const std::shared_ptr<XmlNode>& child : children) {
      const XmlNode* const stopped = readChild(child);
      rules_.checkChild(*child, stopped);
      if (repetitions.check(*child, stopped) && package_) {
        package_->checkChild(*child);
      }
    }
  }

  void addLanguage(FindingCode code, const XmlNode& element) {
    Diagnostic& finding =
        report_.add(code, element, indexOf(element, "lang", config::XML_NAMESPACE));
    finding.attribute = "xml:lang";
  }

  /// Checks children in the order for which `RepetitionRules` asks, those that no user gets aside.
  void checkForAnyUser(const XmlNode& root) {
    Nodes children;
    for (const XmlNode* child = root.firstElementChild(); child != nullptr;
         child = child->nextElementSibling()) {
      if (languageOf(*child) == ANY_LOCALE) {
        addLanguage(FindingCode::UNUSED_LANGUAGE, *child);
      } else {
        children.push_back(child->share());
      }
    }
    // What the parser took of the document stands in front of "*".
    const std::string_view defaultLanguage =
        locales().size() > 1 ? report_.keep(locales().front()) : std::string_view();
    const auto rank = [&](const std::shared_ptr<XmlNode>& child) {
      const std::string_view language = languageOf(*child);
      return language.empty() ? 2 : language == defaultLanguage ? 1 : 0;
    };
    std::stable_sort(children.begin(), children.end(),
                     [&](const auto& left, const auto& right) { return rank(left) < rank(right); });
    RepetitionRules repetitions(report_, defaultLanguage);
    checkChildren(children, repetitions);
  }

  void checkForUser(const XmlNode& root) {
    Nodes visited;
    processUserAgentLocales(visited);
    std::set<const XmlNode*> known;
    // An element is visited again when its locale is listed twice.
    visited.erase(
        std::remove_if(visited.begin(), visited.end(),
                       [&](const auto& node) { return !known.insert(node.get()).second; }),
        visited.end());
    RepetitionRules repetitions(report_, std::nullopt);
    checkChildren(visited, repetitions);
    for (const XmlNode* child = root.firstElementChild(); child != nullptr;
         child = child->nextElementSibling()) {
      if (known.count(child) == 0) {
        addLanguage(
            repetitions.knows(*child) ? FindingCode::OTHER_LANGUAGE : FindingCode::UNUSED_LANGUAGE,
            *child);
      }
    }
  }

  Report& report_;
  const CheckSettings& settings_;
  TreeRules rules_;
  std::optional<PackageRules> package_;
  bool hasError_ = false;             // of the child that is read
  const XmlNode* stopped_ = nullptr;  // at which reading it stopped
};

/// An attribute that is missing because its name is misspelt, or its value a text, is one mistake.
void removeExplained(Report& report) {
  std::set<std::pair<const XmlNode*, std::string>> explained;
  for (const Diagnostic& finding : report.findings()) {
    if (finding.isText) {
      explained.emplace(finding.element, "value");
    } else if (finding.code == FindingCode::UNKNOWN_ATTRIBUTE) {
      explained.emplace(finding.element, suggestionFor(finding).text);
    }
  }
  report.remove([&](const Diagnostic& finding) {
    return finding.code == FindingCode::MISSING_ATTRIBUTE &&
           finding.attributeIndex == Diagnostic::NO_INDEX &&
           explained.count({finding.element, std::string(finding.attribute)}) != 0;
  });
}

}  // namespace

std::unique_ptr<const Report> checkDocument(std::string document, const CheckSettings& settings) {
  auto report = std::make_unique<Report>(std::move(document));
  const std::shared_ptr<util::XmlDocument> tree = Checker(*report, settings).check();
  removeExplained(*report);
  report->complete(tree);
  return report;
}

}  // namespace orvane::nimbrel::check
