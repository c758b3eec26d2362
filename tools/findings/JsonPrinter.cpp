#include <cstdint>
#include <string_view>
#include <vector>

#include "check/FindingCode.h"
#include "check/Fix.h"
#include "check/Wording.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/output/JsonWriter.h"

namespace orvane::nimbrel::tools {
namespace {

/// What the forms have in common.
class FindingsAsJson : public FindingPrinter {
 protected:
  explicit FindingsAsJson(JsonWriter::Layout layout) : json_(layout) {}

  JsonWriter& json() noexcept { return json_; }

  /// All of a file. `report` is null for one that cannot be read.
  void printFile(const std::string& file, const char* status, const std::string& reason,
                 const FindingCounts& counts, const check::Report* report) {
    json_.beginObject();
    json_.member("file", file);
    json_.member("status", status);
    text("reason", reason);
    printCounts(counts);
    json_.key("findings");
    json_.beginArray();
    if (report != nullptr) {
      const std::vector<check::Fix> fixes = check::fixesOf(*report);
      auto next = fixes.begin();
      for (const check::Diagnostic& finding : report->findings()) {
        const bool isFixed = next != fixes.end() && next->finding == &finding;
        print(*report, finding, isFixed ? &*next++ : nullptr);
      }
    }
    json_.endArray();
    json_.endObject();
    endFile();
  }

  void printDocument(const CheckedDocument& document) override {
    const check::Diagnostic* error = nullptr;
    FindingCounts own;
    own.fixed = document.fixed;
    for (const check::Diagnostic& finding : document.report->findings()) {
      const check::Level level = check::descriptionOf(finding.code).level;
      own.add(level);
      error = error == nullptr && level == check::Level::ERROR ? &finding : error;
    }
    printFile(document.file, error == nullptr ? "done" : "rejected",
              error == nullptr ? std::string() : check::wordingOf(*error).sentence, own,
              document.report.get());
  }

  void printFailure(const std::string& file, const DocumentFailure& failure) override {
    printFile(file, "unreadable", failure.problem().reason, {}, nullptr);
  }

  /// Behind each file.
  virtual void endFile() {}

  void printCounts(const FindingCounts& counts) {
    json_.member("errors", counts.errors);
    json_.member("warnings", counts.warnings);
    json_.member("notes", counts.notes);
    if (counts.fixed) {
      json_.member("fixed", *counts.fixed);
    }
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

  void printPlace(const check::Place& place) {
    number("line", place.begin.line);
    number("column", place.begin.column);
    number("endLine", place.end.line);
    number("endColumn", place.end.column);
    offset("byte", place.begin);
    offset("endByte", place.end);
  }

  /// `fix` is null when none is certain.
  void printFixes(const check::Report& report, const check::Fix* fix) {
    json_.key("fixes");
    json_.beginArray();
    if (fix != nullptr) {
      json_.beginObject();
      json_.key("edits");
      json_.beginArray();
      for (const check::Edit& edit : fix->edits) {
        json_.beginObject();
        printPlace(report.placeOf(edit.span));
        json_.member("text", edit.text);
        json_.endObject();
      }
      json_.endArray();
      json_.endObject();
    }
    json_.endArray();
  }

  void print(const check::Report& report, const check::Diagnostic& finding, const check::Fix* fix) {
    const check::CodeDescription& kind = check::descriptionOf(finding.code);
    const check::Wording wording = check::wordingOf(finding);
    const check::Place place = report.placeOf(finding);
    json_.beginObject();
    json_.member("code", kind.name);
    json_.member("level", check::levelName(kind.level));
    printPlace(place);
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
    printFixes(report, fix);
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

  void endFile() override { json().flush(); }

  void end() override {
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

 protected:
  void endFile() override { json().finish(); }

  void end() override {}
};

/// How often each code is found in all files, instead of the findings.
class SummaryJsonPrinter : public FindingsAsJson {
 public:
  explicit SummaryJsonPrinter(JsonWriter::Layout layout) : FindingsAsJson(layout) {}

 protected:
  void printDocument(const CheckedDocument& /*document*/) override {}
  void printFailure(const std::string& /*file*/, const DocumentFailure& /*failure*/) override {}

  void end() override {
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

std::unique_ptr<FindingPrinter> makeJsonPrinter(const FindingStyle& style) {
  const bool inLines = style.format == FindingStyle::Format::JSON_LINES;
  if (style.summary) {
    return std::make_unique<SummaryJsonPrinter>(inLines ? JsonWriter::Layout::LINE
                                                        : JsonWriter::Layout::INDENTED);
  }
  if (inLines) {
    return std::make_unique<JsonLinesPrinter>();
  }
  return std::make_unique<JsonPrinter>();
}

}  // namespace orvane::nimbrel::tools
