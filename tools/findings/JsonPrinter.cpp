#include "tools/findings/FindingPrinter.h"

namespace orvane::nimbrel::tools {
namespace {

/// One object with all documents, or an object in a line of its own for each.
class JsonPrinter : public FindingPrinter {
 public:
  explicit JsonPrinter(bool inLines)
      : inLines_(inLines),
        json_(inLines ? JsonWriter::Layout::LINE : JsonWriter::Layout::INDENTED) {}

  void begin() override {
    if (!inLines_) {
      json_.beginObject();
      json_.key("files");
      json_.beginArray();
    }
  }

  void finish() override {
    if (!inLines_) {
      json_.endArray();
      counts().write(json_);
      json_.endObject();
      json_.finish();
    }
  }

 protected:
  void printDocument(const CheckedDocument& document, const FindingCounts& counts) override {
    std::string reason;
    for (const check::Diagnostic& finding : document.report->findings()) {
      if (reason.empty() && check::descriptionOf(finding.code).level == check::Level::ERROR) {
        reason = check::wordingOf(finding).sentence;
      }
    }
    printFile(document.file, counts.errors == 0 ? "done" : "rejected", reason, counts,
              document.report.get());
  }

  void printFailure(const std::string& file, const DocumentFailure& failure) override {
    printFile(file, "unreadable", failure.problem().reason, {}, nullptr);
  }

 private:
  /// `report` is null for a file that cannot be read.
  void printFile(const std::string& file, const char* status, const std::string& reason,
                 const FindingCounts& counts, const check::Report* report) {
    json_.object([&] {
      json_.member("file", file);
      json_.member("status", status);
      json_.memberOrNull("reason", reason);
      counts.write(json_);
      json_.list("findings", [&] {
        if (report != nullptr) {
          forEachFinding(*report, [&](const ShownFinding& shown) { printFinding(shown); });
        }
      });
    });
    inLines_ ? json_.finish() : json_.flush();
  }

  void printPlace(const check::Place& place) {
    const auto offset = [&](const char* name, const check::Position& position) {
      json_.key(name);
      position.utf16Column == 0 ? json_.value(nullptr) : json_.value(position.byte);
    };
    json_.memberOrNull("line", place.begin.line);
    json_.memberOrNull("column", place.begin.column);
    json_.memberOrNull("endLine", place.end.line);
    json_.memberOrNull("endColumn", place.end.column);
    offset("byte", place.begin);
    offset("endByte", place.end);
  }

  void printFixes(const ShownFinding& shown) {
    json_.list("fixes", [&] {
      if (shown.fix == nullptr) {
        return;
      }
      json_.object([&] {
        json_.list("edits", [&] {
          for (const check::Edit& edit : shown.fix->edits) {
            json_.object([&] {
              printPlace(shown.report.placeOf(edit.span));
              json_.member("text", edit.text);
            });
          }
        });
      });
    });
  }

  void printFinding(const ShownFinding& shown) {
    const check::Wording& wording = shown.wording;
    json_.object([&] {
      json_.member("code", shown.kind.name);
      json_.member("level", check::levelName(shown.kind.level));
      printPlace(shown.place);
      json_.memberOrNull("element", wording.element);
      json_.memberOrNull("attribute", wording.attribute);
      json_.key("value");
      wording.value.data() == nullptr ? json_.value(nullptr) : json_.value(wording.value);
      json_.member("reason", wording.sentence);
      json_.memberOrNull("suggestion", wording.suggestion);
      json_.key("related");
      if (const check::Position other = shown.report.otherOf(shown.finding); other.line == 0) {
        json_.value(nullptr);
      } else {
        json_.object([&] {
          json_.member("line", other.line);
          json_.memberOrNull("column", other.column);
        });
      }
      printFixes(shown);
    });
  }

  bool inLines_;
  JsonWriter json_;
};

}  // namespace

std::unique_ptr<FindingPrinter> makeJsonPrinter(bool inLines) {
  return std::make_unique<JsonPrinter>(inLines);
}

}  // namespace orvane::nimbrel::tools
