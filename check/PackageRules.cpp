#include "check/PackageRules.h"

#include <algorithm>
#include <iterator>

#include "check/Suggestions.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using util::XmlNode;
using zel::util::StringUtil;

/// What a runtime starts when the document names nothing.
constexpr std::string_view DEFAULT_START_FILES[] = {"index.htm", "index.html", "index.svg",
                                                    "index.xhtml", "index.xht"};

/// The types by which the files of a package are identified.
constexpr std::string_view TYPES[] = {"text/html",
                                      "application/xhtml+xml",
                                      "image/svg+xml",
                                      "text/css",
                                      "application/javascript",
                                      "text/plain",
                                      "application/xml",
                                      "audio/x-wav",
                                      "image/gif",
                                      "image/vnd.microsoft.icon",
                                      "image/png",
                                      "image/jpeg"};

constexpr struct {
  std::string_view element;
  std::string_view attribute;
} PATHS[] = {{"content", "src"}, {"icon", "src"}, {"license", "href"}};

bool isElement(const XmlNode& element, std::string_view name) noexcept {
  return element.nameView() == name && element.namespaceView() == config::W3C_WIDGETS_NAMESPACE;
}

/// Whether a value is an address with a scheme. A single letter is a drive.
bool isAddress(std::string_view value) noexcept {
  const std::size_t end = value.find(':');
  return end != std::string_view::npos && end > 1 && util::ascii::isLetter(value.front()) &&
         std::all_of(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(end), [](char c) {
           return util::ascii::isLetterOrDigit(c) || c == '+' || c == '-' || c == '.';
         });
}

/// The languages in whose folders a file is looked for: for "de-AT" that one and "de". Tags longer
/// than any in use are skipped, as a document could ask for very many.
std::vector<std::string> languageRanges(const std::vector<std::string>& locales) {
  constexpr std::size_t LONGEST = 64;
  std::vector<std::string> ranges;
  for (const std::string& locale : locales) {
    std::string range = util::ascii::lowerCased(locale);
    while (range.size() <= LONGEST && !range.empty()) {
      ranges.push_back(range);
      const std::size_t end = range.rfind('-');
      range.resize(end == std::string::npos ? 0 : end);
    }
  }
  return ranges;
}

/// The type that another one was meant to be; empty when that is not certain.
std::string meantType(const std::string& type) {
  const auto* const found = std::find_if(
      std::begin(TYPES), std::end(TYPES),
      [&](std::string_view known) { return known.substr(known.find('/') + 1) == type; });
  return found != std::end(TYPES)
             ? std::string(*found)
             : nearestName(type, {std::begin(TYPES), std::end(TYPES)}, Reach::CERTAIN).text;
}

}  // namespace

PackageRules::PackageRules(const PackageContents& contents, Report& report)
    : contents_(contents), files_(contents.names), report_(report) {}

void PackageRules::checkContents() {
  for (const std::string& name : contents_.names) {
    if (leadsOut(name) || (!name.empty() && (name.front() == '/' || name.front() == '\\'))) {
      addName(FindingCode::OUTSIDE_PACKAGE, name);
    }
  }
  for (const std::string& name : contents_.links) {
    addName(FindingCode::OUTSIDE_PACKAGE, name, name);
  }
  if (contents_.unlistedBytes != 0) {
    addName(FindingCode::UNLISTED_BYTES, {}, std::to_string(contents_.unlistedBytes));
  }
  files_.forEachAmbiguous([&](std::string_view name, std::string_view other) {
    addName(FindingCode::AMBIGUOUS_NAME, name, other);
  });
}

void PackageRules::checkRoot(const XmlNode& root, const std::vector<std::string>* locales) {
  languages_.reset();
  if (locales != nullptr) {
    languages_ = languageRanges(*locales);
  }
  for (const XmlNode* child = root.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (isElement(*child, "content")) {
      return;  // a faulty one is a finding of its own
    }
  }
  if (std::none_of(std::begin(DEFAULT_START_FILES), std::end(DEFAULT_START_FILES),
                   [&](std::string_view file) { return has(file); })) {
    const std::string_view meant = files_.meantBy("index.html");
    addName(FindingCode::MISSING_FILE, {}, has(meant) ? meant : std::string_view());
  }
}

void PackageRules::checkChild(const XmlNode& element) {
  for (const auto& path : PATHS) {
    const std::uint32_t index = indexOf(element, path.attribute);
    if (index != Diagnostic::NO_INDEX && isElement(element, path.element)) {
      checkPath(element, index);
    }
  }
  const std::uint32_t type = indexOf(element, "type");
  if (type != Diagnostic::NO_INDEX && isElement(element, "content")) {
    checkType(element, type);
  }
}

bool PackageRules::has(std::string_view path) const {
  return files_.has(path, languages_ ? &*languages_ : nullptr);
}

void PackageRules::checkPath(const XmlNode& element, std::uint32_t index) {
  const std::string path = StringUtil::squeezeAndTrim(element.attributeAt(index).value);
  if (path.empty() || isAddress(path)) {
    return;
  }
  const bool isOutside = leadsOut(path);
  if (isOutside || !has(path)) {
    const FindingCode code = isOutside ? FindingCode::OUTSIDE_PACKAGE : FindingCode::MISSING_FILE;
    report_.add(code, element, index).name =
        report_.keep(files_.has(path, nullptr) ? resolvePath(path) : files_.meantBy(path));
  }
}

void PackageRules::checkType(const XmlNode& element, std::uint32_t index) {
  const std::string type = StringUtil::squeezeAndTrim(element.attributeAt(index).value);
  // Parameters and case aside.
  const std::string plain =
      util::ascii::lowerCased(std::string(StringUtil::trimmed(type.substr(0, type.find(';')))));
  if (!type.empty() && std::find(std::begin(TYPES), std::end(TYPES), plain) == std::end(TYPES)) {
    report_.add(FindingCode::UNKNOWN_TYPE, element, index).name = report_.keep(meantType(type));
  }
}

void PackageRules::addName(FindingCode code, std::string_view name, std::string_view other) {
  Diagnostic& finding = report_.add(code, nullptr);
  finding.isOfPackage = true;
  finding.value = name.data() == nullptr ? name : report_.keep(name);
  finding.name = report_.keep(other);
}

}  // namespace orvane::nimbrel::check
