#include <cstdint>
#include <string_view>

#include "check/Kind.h"
#include "check/Wording.h"
#include "tools/JsonWriter.h"
#include "tools/findings/FindingPrinter.h"

namespace orvane::nimbrel::tools {
namespace {

/// What both forms have in common.
class FindingsAsJson : public FindingPrinter {
 protected:
  explicit FindingsAsJson(JsonWriter::Layout layout) : json_(layout) {}

  JsonWriter& json() noexcept { return json_; }

  void printFindings(const check::Report& report) {
    json_.key("findings");
    json_.beginArray();
    for (const check::Diagnostic& finding : report.findings()) {
      print(report, finding);
    }
    json_.endArray();
  }

  void printCounts(const FindingCounts& counts) {
    json_.member("errors", counts.errors);
    json_.member("warnings", counts.warnings);
    json_.member("notes", counts.notes);
  }

  void number(std::string_view name, std::uint32_t value) {
    json_.key(name);
    value == 0 ? json_.value(nullptr) : json_.value(value);
  }
  void text(std::string_view name, std::string_view value) {
    json_.key(name);
    value.empty() ? json_.value(nullptr) : json_.value(value);
  }

 private:
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

/// One object with all documents.
class JsonPrinter : public FindingsAsJson {
 public:
  JsonPrinter() : FindingsAsJson(JsonWriter::Layout::INDENTED) {}

 protected:
  void begin() override {
    json().beginObject();
    json().key("files");
    json().beginArray();
  }

  void printDocument(const std::string& name, const check::Report& report) override {
    json().beginObject();
    json().member("file", name);
    printFindings(report);
    json().endObject();
  }

  void end(bool /*complete*/) override {
    json().endArray();
    printCounts(counts());
    json().endObject();
    json().finish();
  }
};

/// An object, in a line of its own, for each file.
class JsonLinesPrinter : public FindingsAsJson {
 public:
  JsonLinesPrinter() : FindingsAsJson(JsonWriter::Layout::LINE) {}

  void printUnreadable(const std::string& file, const DocumentFailure& failure) override {
    FindingPrinter::printUnreadable(file, failure);
    beginFile(file, "unreadable", failure.problem().reason);
    printCounts({});
    printFindings(check::Report(""));
    json().endObject();
    json().finish();
  }

 protected:
  void printDocument(const std::string& name, const check::Report& report) override {
    const check::Diagnostic* error = nullptr;
    FindingCounts own;
    for (const check::Diagnostic& finding : report.findings()) {
      const check::Level level = check::kindOf(finding.code).level;
      own.add(level);
      error = error == nullptr && level == check::Level::ERROR ? &finding : error;
    }
    beginFile(name, error == nullptr ? "done" : "rejected",
              error == nullptr ? std::string() : check::wordingOf(*error).sentence);
    printCounts(own);
    printFindings(report);
    json().endObject();
    json().finish();
  }

  void end(bool /*complete*/) override {}

 private:
  void beginFile(const std::string& file, const char* status, const std::string& reason) {
    json().beginObject();
    json().member("file", file);
    json().member("status", status);
    text("reason", reason);
  }
};

/// How often each code is found in all files, instead of the findings.
class SummaryJsonPrinter : public FindingsAsJson {
 public:
  SummaryJsonPrinter() : FindingsAsJson(JsonWriter::Layout::INDENTED) {}

 protected:
  void printDocument(const std::string& /*name*/, const check::Report& /*report*/) override {}

  void end(bool /*complete*/) override {
    json().beginObject();
    json().member("files", files().read + files().unreadable);
    json().member("rejected", files().rejected);
    json().member("unreadable", files().unreadable);
    printCounts(counts());
    json().key("codes");
    json().beginArray();
    for (const CodeCount& code : codes()) {
      json().beginObject();
      json().member("code", code.kind->name);
      json().member("level", check::levelName(code.kind->level));
      json().member("findings", code.findings);
      json().member("files", code.files);
      json().endObject();
    }
    json().endArray();
    json().endObject();
    json().finish();
  }
};

}  // namespace

std::unique_ptr<FindingPrinter> jsonPrinter() {
  return std::make_unique<JsonPrinter>();
}

std::unique_ptr<FindingPrinter> jsonLinesPrinter() {
  return std::make_unique<JsonLinesPrinter>();
}

std::unique_ptr<FindingPrinter> summaryJsonPrinter() {
  return std::make_unique<SummaryJsonPrinter>();
}

}  // namespace orvane::nimbrel::tools
