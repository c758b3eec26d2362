#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "check/FindingCode.h"
#include "check/Fix.h"
#include "check/Wording.h"
#include "tools/findings/ArtifactUri.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/findings/LineHashes.h"
#include "tools/findings/SarifRules.h"
#include "tools/findings/Sentence.h"
#include "tools/output/JsonWriter.h"

namespace orvane::nimbrel::tools {
namespace {

using check::CodeDescription;
using check::Position;

constexpr char SCHEMA[] =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";
/// What relative addresses are relative to: the folder in which the tool was started.
constexpr char BASE[] = "SRCROOT";

/// Tells findings of one document apart by what they say, not by their place, so that a viewer
/// knows one again when lines move. FNV-1a; not for security.
class Fingerprints {
 public:
  std::string next(const CodeDescription& kind, const check::Wording& wording) {
    constexpr std::size_t LONGEST = 200;  // of what the document says
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const std::string_view part : {kind.name, std::string_view(wording.element),
                                        std::string_view(wording.attribute), wording.value}) {
      for (const char c : part.substr(0, LONGEST)) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
      }
      hash = (hash ^ 0xFFU) * 0x100000001B3U;  // ends the part
    }
    char digits[16];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), hash, 16).ptr;
    return std::string(std::begin(digits), end) + ':' + std::to_string(++seen_[hash]);
  }

 private:
  std::map<std::uint64_t, std::uint32_t> seen_;  // how often
};

class SarifPrinter : public FindingPrinter {
 protected:
  void begin() override {
    json_.beginObject();
    json_.member("$schema", SCHEMA);
    json_.member("version", "2.1.0");
    json_.key("runs");
    json_.beginArray();
    json_.beginObject();
    json_.key("tool");
    writeSarifTool(json_);
    json_.member("columnKind", "utf16CodeUnits");
    json_.key("originalUriBaseIds");
    json_.beginObject();
    json_.key(BASE);
    json_.beginObject();
    writeSarifMessage(json_, "description", "The folder in which nimbrel-config was started.");
    json_.endObject();
    json_.endObject();
    json_.key("results");
    json_.beginArray();
  }

  void printDocument(const CheckedDocument& document) override {
    Fingerprints fingerprints;
    const check::Report& report = *document.report;
    const LineHashes lines(report.findings().empty() ? std::string() : report.document());
    const std::vector<check::Fix> fixes = check::fixesOf(report);
    auto next = fixes.begin();
    for (const check::Diagnostic& finding : report.findings()) {
      const bool isFixed = next != fixes.end() && next->finding == &finding;
      printResult(document, finding, isFixed ? &*next++ : nullptr, fingerprints, lines);
    }
  }

  void printFailure(const std::string& file, const DocumentFailure& failure) override {
    unreadable_.push_back({file, failure.what()});
  }

  void end() override {
    json_.endArray();
    json_.key("invocations");
    json_.beginArray();
    json_.beginObject();
    json_.member("executionSuccessful", unreadable_.empty());
    json_.key("toolExecutionNotifications");
    json_.beginArray();
    for (const Unreadable& each : unreadable_) {
      printNotification(each);
    }
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.finish();
  }

 private:
  struct Unreadable {
    std::string file;
    std::string line;  // what standard error says
  };

  void printArtifact(const std::string& file) {
    json_.key("artifactLocation");
    json_.beginObject();
    json_.member("uri", artifactUri(file));
    if (!isAbsolute(file)) {
      json_.member("uriBaseId", BASE);
    }
    json_.endObject();
  }

  /// Columns are those of the format: UTF-16 code units. Code scanning shows nothing without a
  /// line.
  void printRegion(const char* key, const check::Place& place) {
    json_.key(key);
    json_.beginObject();
    json_.member("startLine", std::max(place.begin.line, 1U));
    if (place.begin.utf16Column != 0) {
      json_.member("startColumn", place.begin.utf16Column);
    }
    if (place.begin.utf16Column != 0 && place.end.utf16Column != 0) {
      json_.member("endLine", place.end.line);
      json_.member("endColumn", place.end.utf16Column);
      json_.member("byteOffset", place.begin.byte);
      json_.member("byteLength", place.end.byte - place.begin.byte);
    }
    json_.endObject();
  }

  /// The members of a location. Of a package, which is the file that a viewer has, its first line
  /// stands for a place in its document.
  void printLocation(const CheckedDocument& document, const check::Place& place) {
    const bool isPackaged = document.name != document.file;
    json_.key("physicalLocation");
    json_.beginObject();
    printArtifact(document.file);
    printRegion("region", isPackaged ? check::Place() : place);
    json_.endObject();
    if (isPackaged && place.begin.line != 0) {
      json_.key("logicalLocations");
      json_.beginArray();
      json_.beginObject();
      json_.member("fullyQualifiedName", placeInPackage(document, place.begin));
      json_.member("kind", "resource");
      json_.endObject();
      json_.endArray();
    }
  }

  /// "config.xml:2:5", without what is not known.
  static std::string placeInPackage(const CheckedDocument& document, const Position& position) {
    std::string text = document.name.substr(document.file.size() + 1);
    text += ':' + std::to_string(position.line);
    return position.column == 0 ? text : text + ':' + std::to_string(position.column);
  }

  void printResult(const CheckedDocument& document, const check::Diagnostic& finding,
                   const check::Fix* fix, Fingerprints& fingerprints, const LineHashes& lines) {
    const check::Report& report = *document.report;
    const CodeDescription& kind = check::descriptionOf(finding.code);
    const check::Wording wording = check::wordingOf(finding);
    const check::Place place = report.placeOf(finding);
    const bool isPackaged = document.name != document.file;
    const bool isPlacedInPackage = isPackaged && place.begin.line != 0;
    json_.beginObject();
    json_.member("ruleId", kind.name);
    json_.member("ruleIndex", &kind - check::codeDescriptions().begin());
    json_.member("level", check::levelName(kind.level));
    writeSarifMessage(
        json_, "message",
        (isPlacedInPackage ? placeInPackage(document, place.begin) + ": " : std::string()) +
            sentenceOf(wording));
    json_.key("locations");
    json_.beginArray();
    json_.beginObject();
    printLocation(document, place);
    json_.endObject();
    json_.endArray();
    const Position other = report.otherOf(finding);
    if (other.line != 0) {
      json_.key("relatedLocations");
      json_.beginArray();
      json_.beginObject();
      printLocation(document, {other, {}});
      writeSarifMessage(json_, "message", "The message refers to this place.");
      json_.endObject();
      json_.endArray();
    }
    json_.key("partialFingerprints");
    json_.beginObject();
    json_.member("finding/v1", fingerprints.next(kind, wording));
    if (!isPackaged) {
      json_.member("primaryLocationLineHash", lines.of(std::max(place.begin.line, 1U)));
    }
    json_.endObject();
    if (fix != nullptr && !isPackaged) {
      printFix(document.file, report, *fix);
    }
    json_.endObject();
  }

  void printFix(const std::string& file, const check::Report& report, const check::Fix& fix) {
    json_.key("fixes");
    json_.beginArray();
    json_.beginObject();
    json_.key("artifactChanges");
    json_.beginArray();
    json_.beginObject();
    printArtifact(file);
    json_.key("replacements");
    json_.beginArray();
    for (const check::Edit& edit : fix.edits) {
      json_.beginObject();
      printRegion("deletedRegion", report.placeOf(edit.span));
      json_.key("insertedContent");
      json_.beginObject();
      json_.member("text", edit.text);
      json_.endObject();
      json_.endObject();
    }
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.endArray();
  }

  void printNotification(const Unreadable& unreadable) {
    json_.beginObject();
    json_.key("descriptor");
    json_.beginObject();
    json_.member("id", UNREADABLE_FILE);
    json_.member("index", 0);
    json_.endObject();
    json_.member("level", "error");
    writeSarifMessage(json_, "message", unreadable.line);
    json_.key("locations");
    json_.beginArray();
    json_.beginObject();
    json_.key("physicalLocation");
    json_.beginObject();
    printArtifact(unreadable.file);
    json_.endObject();
    json_.endObject();
    json_.endArray();
    json_.endObject();
  }

  JsonWriter json_;
  std::vector<Unreadable> unreadable_;
};

}  // namespace

std::unique_ptr<FindingPrinter> makeSarifPrinter() {
  return std::make_unique<SarifPrinter>();
}

}  // namespace orvane::nimbrel::tools
