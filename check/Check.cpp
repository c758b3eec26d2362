#include "check/Check.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "check/PackageRules.h"
#include "check/Probe.h"
#include "check/RepetitionRules.h"
#include "check/Suggestions.h"
#include "check/TreeRules.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"

namespace orvane::nimbrel::check {
namespace {

using util::XmlNode;
using Nodes = std::vector<std::shared_ptr<XmlNode>>;

/// No user asks for it: it stands for elements without a language.
constexpr std::string_view ANY_LOCALE = "*";

std::string_view languageOf(const XmlNode& element) noexcept {
  return element.attributeView("lang", config::XML_NAMESPACE);
}

Nodes childrenOf(const XmlNode& root) {
  Nodes children;
  for (const XmlNode* child = root.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    children.push_back(child->share());
  }
  return children;
}

void addLanguage(FindingCode code, const XmlNode& element, Report& report) {
  Diagnostic& finding = report.add(code, element, indexOf(element, "lang", config::XML_NAMESPACE));
  finding.attribute = "xml:lang";
}

/// What checks a document.
struct Checker {
  Report& report;
  Probe probe;
  TreeRules rules;
  std::optional<PackageRules> package;

  Checker(Report& reportOfDocument, const CheckSettings& settings)
      : report(reportOfDocument),
        probe(report, settings.logMask),
        rules(probe, settings.package.has_value(), report) {
    if (settings.package) {
      package.emplace(*settings.package, report).checkContents();
    }
  }

  /// Checks children of the root in this order.
  void checkChildren(const Nodes& children, RepetitionRules& repetitions) {
    for (const std::shared_ptr<XmlNode>& child : children) {
      const XmlNode* const stopped = probe.readChild(child);
      rules.checkChild(*child, stopped);
      if (repetitions.check(*child, stopped) && package) {
        package->checkChild(*child);
      }
    }
  }
};

/// Orders the children of the root as `Occurrences` asks for; those that no user gets go.
Nodes forAnyUser(Nodes children, std::string_view defaultLanguage, Report& report) {
  Nodes ordered;
  ordered.reserve(children.size());
  const auto take = [&](auto isWanted) {
    for (std::shared_ptr<XmlNode>& child : children) {
      if (child != nullptr && isWanted(languageOf(*child))) {
        ordered.push_back(std::move(child));
      }
    }
  };
  for (std::shared_ptr<XmlNode>& child : children) {
    if (languageOf(*child) == ANY_LOCALE) {
      addLanguage(FindingCode::UNUSED_LANGUAGE, *child, report);
      child.reset();
    }
  }
  take([&](std::string_view language) { return !language.empty() && language != defaultLanguage; });
  take([](std::string_view language) { return !language.empty(); });
  take([](std::string_view /*language*/) { return true; });
  return ordered;
}

void checkForAnyUser(const XmlNode& root, Checker& checker) {
  // What the parser took of the document stands in front of "*".
  const std::vector<std::string>& locales = checker.probe.locales();
  const std::string_view defaultLanguage =
      locales.size() > 1 ? checker.report.keep(locales.front()) : std::string_view();
  RepetitionRules repetitions(checker.probe, checker.report, defaultLanguage);
  checker.checkChildren(forAnyUser(childrenOf(root), defaultLanguage, checker.report), repetitions);
}

void checkForUser(const XmlNode& root, Checker& checker) {
  Nodes visited = checker.probe.visited();
  std::set<const XmlNode*> known;
  // An element is visited again when its locale is listed twice.
  visited.erase(std::remove_if(visited.begin(), visited.end(),
                               [&](const auto& node) { return !known.insert(node.get()).second; }),
                visited.end());
  RepetitionRules repetitions(checker.probe, checker.report);
  checker.checkChildren(visited, repetitions);
  for (const std::shared_ptr<XmlNode>& child : childrenOf(root)) {
    if (known.count(child.get()) == 0) {
      addLanguage(
          repetitions.knows(*child) ? FindingCode::OTHER_LANGUAGE : FindingCode::UNUSED_LANGUAGE,
          *child, checker.report);
    }
  }
}

/// An attribute that is missing because its name is misspelt, or its value a text, is one mistake.
void removeExplained(Report& report) {
  const auto isMissing = [](const Diagnostic& finding) {
    return finding.code == FindingCode::MISSING_ATTRIBUTE &&
           finding.attributeIndex == Diagnostic::NO_INDEX;
  };
  std::map<const XmlNode*, std::string_view> missing;
  for (const Diagnostic& finding : report.findings()) {
    if (isMissing(finding)) {
      missing.emplace(finding.element, finding.attribute);
    }
  }
  std::set<const XmlNode*> explained;
  for (const Diagnostic& finding : report.findings()) {
    const auto found = missing.find(finding.element);
    if (found != missing.end() &&
        (finding.isText ? found->second == "value"
                        : finding.code == FindingCode::UNKNOWN_ATTRIBUTE &&
                              suggestionFor(finding, Reach::LIKELY) == found->second)) {
      explained.insert(finding.element);
    }
  }
  report.remove([&](const Diagnostic& finding) {
    return isMissing(finding) && explained.count(finding.element) != 0;
  });
}

}  // namespace

std::unique_ptr<const Report> checkDocument(std::string document, const CheckSettings& settings) {
  auto report = std::make_unique<Report>(std::move(document));
  Checker checker(*report, settings);
  const std::shared_ptr<util::XmlDocument> tree = checker.probe.parseXml();
  if (tree != nullptr &&
      checker.probe.readRoot(tree, settings.locales.value_or(std::vector<std::string>()))) {
    const std::shared_ptr<XmlNode> root = tree->getDocumentElement();
    checker.rules.checkRoot(*root);
    if (checker.package) {
      checker.package->checkRoot(*root, settings.locales ? &checker.probe.locales() : nullptr);
    }
    (settings.locales ? checkForUser : checkForAnyUser)(*root, checker);
    removeExplained(*report);
  }
  report->complete(tree);
  return report;
}

}  // namespace orvane::nimbrel::check
