// What explains a document to its author, for a user agent whose locales the input chooses; the
// input is that of the target "document", without an encoding.
//
// A document has an error if and only if the parser rejects it for this user. Each finding has a
// place within the document and a sentence, and comes in the order of the document. Fixing what is
// certain makes no document rejected, and doing it again changes nothing.

#include "check/Check.h"

#include <algorithm>
#include <string>
#include <vector>

#include "check/FindingCode.h"
#include "check/Fix.h"
#include "check/Wording.h"
#include "fuzz/Host.h"
#include "fuzz/Property.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::fuzz {
namespace {

bool isRejected(std::string_view document, const std::vector<std::string>& locales) {
  test::Reader parser(locales);
  try {
    static_cast<void>(parser.parse(document.data(), static_cast<unsigned int>(document.size()),
                                   nullptr, nullptr));
    return false;
  } catch (const config::ConfigParser::ConfigException&) {
  } catch (const std::invalid_argument&) {
  } catch (const std::overflow_error&) {
  }
  return true;
}

/// Whether there is an error.
bool examine(const check::Report& report) {
  bool hasError = false;
  std::size_t before = 0;
  for (const check::Diagnostic& finding : report.findings()) {
    hasError |= check::descriptionOf(finding.code).level == check::Level::ERROR;
    const check::Wording wording = check::wordingOf(finding);
    require(!wording.sentence.empty(), "a finding has a sentence");
    require(wording.suggestion.empty() || wording.suggestion != wording.value,
            "a suggestion is something else");
    require(finding.element == nullptr || finding.line != 0, "an element has a line");
    const check::Place place = report.placeOf(finding);
    static_cast<void>(report.otherOf(finding));
    if (finding.hasSpan) {
      require(finding.span.begin <= finding.span.end &&
                  finding.span.end <= report.source().text().size(),
              "a place lies in the document");
      require(place.end.byte <= report.document().size(), "its bytes do, too");
      require(finding.element == nullptr || place.begin.line >= finding.line,
              "a place lies in its element");
      require(before <= finding.span.begin, "findings are in order");
      before = finding.span.begin;
    }
  }
  return hasError;
}

void fix(std::string_view document) {
  const check::FixedDocument fixed = check::fixDocument(std::string(document));
  require((fixed.count == 0) == (fixed.report->document() == document), "a fix changes something");
  const std::size_t again = check::fixDocument(fixed.report->document()).count;
  require(again == 0, "nothing is left to fix");
  require(isRejected(document, {}) || !isRejected(fixed.report->document(), {}),
          "a fix does not reject the document");
}

}  // namespace
}  // namespace orvane::nimbrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::nimbrel;
  std::string_view document = fuzz::viewOf(data, size);
  std::string_view languages = fuzz::takeUpTo('\n', document);
  languages = languages.substr(0, languages.find(';'));
  std::vector<std::string> locales;
  while (!languages.empty() && locales.size() < 16) {
    locales.emplace_back(fuzz::takeUpTo(',', languages));
  }
  const bool hasError = fuzz::examine(*check::checkDocument(std::string(document), {locales}));
  fuzz::require(hasError == fuzz::isRejected(document, locales),
                "exactly a rejected document has an error");
  fuzz::examine(*check::checkDocument(std::string(document)));
  fuzz::fix(document);
  return 0;
}
