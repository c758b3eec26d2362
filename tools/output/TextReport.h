#pragma once

#include <cstddef>
#include <functional>
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
  using Describe = std::function<void(TextReport& report)>;

  /// Prints what `describe` adds to standard output. It is called twice and adds the same each
  /// time: the first call finds how wide the labels are, so that no row has to be kept. Throws
  /// `Failure` and what `describe` throws.
  static void print(bool colour, const Describe& describe);

  /// Begins a section. One that stays without rows is not printed.
  void section(std::string_view title);
  /// Adds a row; an empty value is printed as "". `note` follows it, set apart.
  void row(std::string_view label, std::string_view value, std::string_view note = {});
  /// The same for a text whose line breaks are kept: further lines stand under the first.
  void lines(std::string_view label, std::string_view text, std::string_view note = {});

 private:
  explicit TextReport(bool colour) : colour_(colour) {}

  /// Adds the label; false while only its width is wanted.
  bool beginRow(const std::string& label);
  void endRow(std::string_view note);
  void writeLarge();  // what is pending, if it is much

  bool colour_;
  bool isPrinting_ = false;
  bool isIndented_ = false;          // below titles
  std::vector<std::size_t> widths_;  // of the labels of each section
  std::size_t sections_ = 0;         // begun so far
  std::string title_;                // of a section without a row yet
  bool isFirst_ = true;              // nothing printed yet
  std::string pending_;
};

}  // namespace orvane::nimbrel::tools
