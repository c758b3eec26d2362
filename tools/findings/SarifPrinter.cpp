#include <string>
#include <string_view>

#include "check/Kind.h"
#include "check/Wording.h"
#include "tools/JsonWriter.h"
#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/findings/Sentence.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Kind;
using check::Position;

constexpr char SCHEMA[] =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

/// A path as a URI: of the scheme "file" when it is absolute, else a relative reference.
std::string toUri(std::string_view path) {
  constexpr std::string_view KEPT =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char c : path) {
    if (KEPT.find(c) != std::string_view::npos) {
      uri += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      uri += '%';
      uri += "0123456789ABCDEF"[byte >> 4];
      uri += "0123456789ABCDEF"[byte & 0xF];
    }
  }
  return uri;
}

class SarifPrinter : public FindingPrinter {
 protected:
  void begin() override {
    json_.beginObject();
    json_.member("$schema", SCHEMA);
    json_.member("version", "2.1.0");
    json_.key("runs");
    json_.beginArray();
    json_.beginObject();
    printTool();
    json_.member("columnKind", "utf16CodeUnits");
    json_.key("results");
    json_.beginArray();
  }

  void printDocument(const DocumentName& name, const check::Report& report) override {
    const std::string uri = toUri(name.file);
    for (const check::Diagnostic& finding : report.findings()) {
      printResult(uri, report, finding);
    }
  }

  void end() override {
    json_.endArray();
    json_.key("invocations");
    json_.beginArray();
    json_.beginObject();
    json_.member("executionSuccessful", files().unreadable == 0);
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.finish();
  }

 private:
  void message(std::string_view name, std::string_view text) {
    json_.key(name);
    json_.beginObject();
    json_.member("text", text);
    json_.endObject();
  }

  void printTool() {
    json_.key("tool");
    json_.beginObject();
    json_.key("driver");
    json_.beginObject();
    json_.member("name", "nimbrel-config");
    json_.member("version", NIMBREL_VERSION);
    json_.key("rules");
    json_.beginArray();
    for (const Kind& kind : check::kinds()) {
      json_.beginObject();
      json_.member("id", kind.name);
      message("shortDescription", kind.summary);
      message("help", std::string(kind.summary) + "\n\n" + examplesOf(kind));
      json_.key("defaultConfiguration");
      json_.beginObject();
      json_.member("level", check::levelName(kind.level));
      json_.endObject();
      json_.endObject();
    }
    json_.endArray();
    json_.endObject();
    json_.endObject();
  }

  /// Columns are those of the format: UTF-16 code units.
  void printLocation(const std::string& uri, const Position& begin, const Position& end) {
    json_.beginObject();
    json_.key("physicalLocation");
    json_.beginObject();
    json_.key("artifactLocation");
    json_.beginObject();
    json_.member("uri", uri);
    json_.endObject();
    if (begin.line != 0) {
      json_.key("region");
      json_.beginObject();
      json_.member("startLine", begin.line);
      const std::uint32_t column = begin.utf16Column != 0 ? begin.utf16Column : begin.column;
      if (column != 0) {
        json_.member("startColumn", column);
      }
      if (begin.utf16Column != 0 && end.utf16Column != 0) {
        json_.member("endLine", end.line);
        json_.member("endColumn", end.utf16Column);
        json_.member("byteOffset", begin.byte);
        json_.member("byteLength", end.byte - begin.byte);
      }
      json_.endObject();
    }
    json_.endObject();
  }

  void printResult(const std::string& uri, const check::Report& report,
                   const check::Diagnostic& finding) {
    const Kind& kind = check::kindOf(finding.code);
    const check::Place place = report.placeOf(finding);
    json_.beginObject();
    json_.member("ruleId", kind.name);
    json_.member("ruleIndex", &kind - check::kinds().begin());
    json_.member("level", check::levelName(kind.level));
    message("message", sentenceOf(check::wordingOf(finding)));
    json_.key("locations");
    json_.beginArray();
    printLocation(uri, place.begin, place.end);
    json_.endObject();
    json_.endArray();
    const Position other = report.otherOf(finding);
    if (other.line != 0) {
      json_.key("relatedLocations");
      json_.beginArray();
      printLocation(uri, other, {});
      message("message", "The message refers to this place.");
      json_.endObject();
      json_.endArray();
    }
    json_.endObject();
  }

  JsonWriter json_;
};

}  // namespace

std::unique_ptr<FindingPrinter> sarifPrinter() {
  return std::make_unique<SarifPrinter>();
}

}  // namespace orvane::nimbrel::tools
