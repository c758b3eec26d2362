#include <cstdint>
#include <string_view>

#include "check/Kind.h"
#include "check/Wording.h"
#include "tools/JsonWriter.h"
#include "tools/findings/FindingPrinter.h"

namespace orvane::nimbrel::tools {
namespace {

class JsonPrinter : public FindingPrinter {
 protected:
  void begin() override {
    json_.beginObject();
    json_.key("files");
    json_.beginArray();
  }

  void printDocument(const std::string& name, const check::Report& report) override {
    json_.beginObject();
    json_.member("file", name);
    json_.key("findings");
    json_.beginArray();
    for (const check::Diagnostic& finding : report.findings()) {
      print(report, finding);
    }
    json_.endArray();
    json_.endObject();
  }

  void end(bool /*complete*/) override {
    json_.endArray();
    json_.member("errors", counts().errors);
    json_.member("warnings", counts().warnings);
    json_.member("notes", counts().notes);
    json_.endObject();
    json_.finish();
  }

 private:
  void number(std::string_view name, std::uint32_t value) {
    json_.key(name);
    value == 0 ? json_.value(nullptr) : json_.value(value);
  }
  void text(std::string_view name, std::string_view value) {
    json_.key(name);
    value.empty() ? json_.value(nullptr) : json_.value(value);
  }
  void offset(std::string_view name, const check::Position& position) {
    json_.key(name);
    position.utf16Column == 0 ? json_.value(nullptr) : json_.value(position.byte);
  }

  void print(const check::Report& report, const check::Diagnostic& finding) {
    const check::Kind& kind = check::kindOf(finding.code);
    const check::Wording wording = check::wordingOf(finding);
    const check::Place place = report.placeOf(finding);
    json_.beginObject();
    json_.member("code", kind.name);
    json_.member("level", check::levelName(kind.level));
    number("line", place.begin.line);
    number("column", place.begin.column);
    number("endLine", place.end.line);
    number("endColumn", place.end.column);
    offset("byte", place.begin);
    offset("endByte", place.end);
    text("element", wording.element);
    text("attribute", wording.attribute);
    json_.key("value");
    wording.value.data() == nullptr ? json_.value(nullptr) : json_.value(wording.value);
    json_.member("reason", wording.sentence);
    text("suggestion", wording.suggestion);
    const check::Position other = report.otherOf(finding);
    json_.key("related");
    if (other.line == 0) {
      json_.value(nullptr);
    } else {
      json_.beginObject();
      number("line", other.line);
      number("column", other.column);
      json_.endObject();
    }
    json_.endObject();
  }

  JsonWriter json_;
};

}  // namespace

std::unique_ptr<FindingPrinter> jsonPrinter() {
  return std::make_unique<JsonPrinter>();
}

}  // namespace orvane::nimbrel::tools
