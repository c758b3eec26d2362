#include "tools/record/RecordPrinter.h"

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "tools/record/RecordJson.h"
#include "tools/record/RecordText.h"
#include "tools/record/SelectField.h"

namespace orvane::nimbrel::tools {
namespace {

/// Prints a field for a script: one line for each value, after a prefix. Nothing for an absent
/// option; a text without its language; the entries of a list; a structure as JSON. All is escaped.
template <typename Value>
void printLines(const std::string& prefix, const Value& value) {
  if constexpr (IS_OPTION<Value>) {
    if (value) {
      printLines(prefix, value.get());
    }
  } else if constexpr (IS_LIST<Value>) {
    for (const auto& entry : value) {
      printLines(prefix, entry);
    }
  } else if constexpr (std::is_same_v<Value, util::LocalizableString>) {
    printLines(prefix, value.c_str());
  } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
    writeOutput(prefix + escape(value) + '\n');
  } else {
    std::string line = prefix;
    JsonWriter json(JsonWriter::Layout::LINE, [&](std::string_view text) { line += text; });
    writeValue(json, value);
    json.finish();
    writeOutput(line);
  }
}

}  // namespace

void requireField(const std::string& name) {
  config::BasicConfig empty;
  if (!selectField(empty, "", name, [](const auto& /*value*/) {})) {
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: there is no field \"" + escape(name) +
                                     "\"; the keys of --format json are fields");
  }
}

RecordPrinter::RecordPrinter(RecordStyle style)
    : style_(std::move(style)),
      json_(isLines() ? JsonWriter::Layout::LINE : JsonWriter::Layout::INDENTED) {}

void RecordPrinter::print(const std::string& file, config::BasicConfig& record,
                          const std::string& errorText) {
  if (isListed()) {
    beginFile(file, "done", nullptr);
    printRecord(record, errorText);
    endFile();
  } else if (style_.format == "json") {
    printRecord(record, errorText);
    json_.finish();
  } else if (style_.field) {
    const std::string prefix = style_.several ? escape(file) + ':' : "";
    selectField(record, errorText, *style_.field,
                [&](const auto& value) { printLines(prefix, value); });
  } else {
    if (style_.several) {
      const std::string name = style_.colour ? "\x1b[1m" + escape(file) + "\x1b[0m" : escape(file);
      writeOutput((std::exchange(first_, false) ? "" : "\n") + name + ":\n\n");
    }
    printRecordText(record, errorText, style_.colour);
  }
}

void RecordPrinter::printFailure(const std::string& file, const DocumentFailure& failure) {
  if (!isListed() || failure.status() == EXIT_UNUSABLE) {
    writeError(failure.what());
  }
  if (isListed()) {
    beginFile(file, failure.status() == EXIT_REJECTED ? "rejected" : "unreadable",
              &failure.problem());
    json_.value(nullptr);
    endFile();
  }
}

void RecordPrinter::finish() {
  if (isListed() && !isLines()) {
    beginList();
    json_.endArray();
    json_.finish();
  }
}

void RecordPrinter::beginList() {
  if (std::exchange(first_, false)) {
    json_.beginArray();
  }
}

/// All of an object up to the record.
void RecordPrinter::beginFile(const std::string& file, const char* status,
                              const DocumentFailure::Problem* problem) {
  if (!isLines()) {
    beginList();
  }
  json_.beginObject();
  json_.member("file", file);
  json_.member("status", status);
  json_.key("reason");
  if (problem == nullptr) {
    json_.value(nullptr);
  } else {
    json_.value(problem->subject + (problem->subject.empty() ? "" : ": ") + problem->reason);
  }
  const auto number = [&](const char* name, std::uint32_t value) {
    json_.key(name);
    value == 0 ? json_.value(nullptr) : json_.value(value);
  };
  number("line", problem == nullptr ? 0 : problem->line);
  number("column", problem == nullptr ? 0 : problem->column);
  json_.key(style_.field ? "value" : "record");
}

void RecordPrinter::endFile() {
  json_.endObject();
  isLines() ? json_.finish() : json_.flush();
}

void RecordPrinter::printRecord(config::BasicConfig& record, const std::string& errorText) {
  if (!style_.field) {
    writeRecord(json_, record, errorText);
    return;
  }
  bool isThere = false;
  selectField(record, errorText, *style_.field, [&](const auto& value) {
    isThere = true;
    writeValue(json_, value);
  });
  if (!isThere) {
    json_.value(nullptr);
  }
}

}  // namespace orvane::nimbrel::tools
