#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::tools {

/// A report for a person: rows of label and value, aligned, in sections.
///
/// Everything that goes in may come from an untrusted document and is escaped. Control sequences
/// for colours are the report's own.
class TextReport {
 public:
  explicit TextReport(bool colour) : colour_(colour) {}

  /// Begins a section. One that stays without rows is not printed.
  void section(std::string_view title);
  /// Adds a row; an empty value is printed as "". `note` follows it, set apart.
  void row(std::string_view label, std::string_view value, std::string_view note = {});
  /// The same for a text whose line breaks are kept: further lines stand under the first.
  void lines(std::string_view label, std::string_view text, std::string_view note = {});
  /// Adds a row that explains the one before it.
  void detail(std::string_view label, std::string_view value, std::string_view note = {});

  /// The whole report.
  [[nodiscard]] std::string finish() const;

 private:
  struct Row {
    std::string label;
    std::vector<std::string> values;
    std::string note;
  };
  struct Section {
    std::string title;
    std::vector<Row> rows;
  };

  void add(Row row);
  void print(const Row& row, std::size_t labelWidth, std::string& out) const;

  bool colour_;
  std::vector<Section> sections_;
};

}  // namespace orvane::nimbrel::tools
