#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/Failure.h"
#include "tools/output/JsonWriter.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// Whether some record may have a field of this name: a key of the record's JSON object, or a path
/// of them with dots between ("startFile.src", "icons.0.src").
[[nodiscard]] bool isField(const std::string& name);
/// The names of all fields, those of an entry with the place 0.
[[nodiscard]] std::vector<std::string> fieldNames();

/// How records are printed.
struct RecordStyle {
  std::string format;                ///< "text", "json" or "jsonl"
  std::optional<std::string> field;  ///< this one alone
  bool several = false;              ///< whether the output has to say which file is meant
  bool colour = false;
};

/// Prints records to standard output as they come. What the output does not take ends it with
/// `Failure`.
class RecordPrinter {
 public:
  explicit RecordPrinter(RecordStyle style);

  /// Prints what was asked for of a document; `file` is its name as it was given.
  void print(const std::string& file, const ShownDocument& document);
  /// Says why there is no record: as JSON with the other files, else on standard error. There it
  /// says in any case which file cannot be read.
  void printFailure(const std::string& file, const DocumentFailure& failure);
  /// Prints what stands at the end.
  void finish();

 private:
  [[nodiscard]] bool isLines() const { return style_.format == "jsonl"; }
  /// Whether each file is an object.
  [[nodiscard]] bool isListed() const {
    return isLines() || (style_.format == "json" && style_.several);
  }

  void beginList();
  /// Prints the object of a file; `document` is null when there is no record.
  void printFile(const std::string& file, const char* status,
                 const DocumentFailure::Problem& problem, const ShownDocument* document);
  void printJson(const ShownDocument& document);

  RecordStyle style_;
  bool first_ = true;
  JsonWriter json_;
};

}  // namespace orvane::nimbrel::tools
