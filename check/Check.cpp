#include "check/Check.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "check/PackageRules.h"
#include "check/Probe.h"
#include "check/RepetitionRules.h"
#include "check/TreeRules.h"
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
  Diagnostic finding;
  finding.code = code;
  finding.element = &element;
  finding.attribute = "xml:lang";
  finding.value = languageOf(element);
  for (std::size_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    if (attribute.name == "lang" && attribute.namespaceUri == config::XML_NAMESPACE) {
      finding.attributeIndex = static_cast<std::uint32_t>(i);
    }
  }
  report.add(finding);
}

/// Checks children of the root in this order.
void checkChildren(const Nodes& children, Probe& probe, RepetitionRules& repetitions,
                   PackageRules* package, Report& report) {
  TreeRules rules(report);
  for (const std::shared_ptr<XmlNode>& child : children) {
    const XmlNode* const stopped = probe.readChild(child);
    rules.checkChild(*child, stopped);
    repetitions.check(*child, stopped);
    if (package != nullptr) {
      package->checkChild(*child);
    }
  }
}

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

void checkForAnyUser(const XmlNode& root, Probe& probe, PackageRules* package, Report& report) {
  // What the parser took of the document stands in front of "*".
  const std::vector<std::string>& locales = probe.locales();
  const std::string_view defaultLanguage =
      locales.size() > 1 ? report.keep(locales.front()) : std::string_view();
  const Nodes children = forAnyUser(childrenOf(root), defaultLanguage, report);
  RepetitionRules repetitions(report, defaultLanguage);
  checkChildren(children, probe, repetitions, package, report);
}

void checkForUser(const XmlNode& root, Probe& probe, PackageRules* package, Report& report) {
  Nodes visited = probe.visited();
  std::set<const XmlNode*> known;
  // An element is visited again when its locale is listed twice.
  visited.erase(std::remove_if(visited.begin(), visited.end(),
                               [&](const auto& node) { return !known.insert(node.get()).second; }),
                visited.end());
  RepetitionRules repetitions(report);
  checkChildren(visited, probe, repetitions, package, report);
  for (const std::shared_ptr<XmlNode>& child : childrenOf(root)) {
    if (known.count(child.get()) == 0) {
      addLanguage(
          repetitions.knows(*child) ? FindingCode::OTHER_LANGUAGE : FindingCode::UNUSED_LANGUAGE,
          *child, report);
    }
  }
}

}  // namespace

std::unique_ptr<const Report> checkDocument(
    std::string document, const std::optional<std::vector<std::string>>& locales,
    std::uint32_t logMask, const std::optional<std::vector<std::string>>& package) {
  auto report = std::make_unique<Report>(std::move(document));
  std::optional<PackageRules> packageRules;
  if (package) {
    packageRules.emplace(*package, *report).checkNames();
  }
  Probe probe(*report, logMask);
  const std::shared_ptr<util::XmlDocument> tree = probe.parseXml();
  if (tree != nullptr && probe.readRoot(tree, locales.value_or(std::vector<std::string>()))) {
    const std::shared_ptr<XmlNode> root = tree->getDocumentElement();
    TreeRules(*report).checkRoot(*root);
    PackageRules* const rules = packageRules ? &*packageRules : nullptr;
    if (rules != nullptr) {
      rules->checkRoot(*root, locales ? &probe.locales() : nullptr);
    }
    (locales ? checkForUser : checkForAnyUser)(*root, probe, rules, *report);
  }
  report->complete(tree);
  return report;
}

}  // namespace orvane::nimbrel::check
