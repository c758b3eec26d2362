#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "check/Report.h"

namespace orvane::nimbrel::tools {

/// How many findings there are of each level.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
};

/// Prints what is found in documents to standard output as it comes: nothing is kept of a document
/// that was printed. What the output does not take ends it with `OutputFailure`.
class FindingPrinter {
 public:
  FindingPrinter() = default;
  FindingPrinter(const FindingPrinter&) = delete;
  FindingPrinter& operator=(const FindingPrinter&) = delete;
  virtual ~FindingPrinter() = default;

  /// Prints and counts the findings of a document that messages call `name`.
  void print(const std::string& name, const check::Report& report);
  /// Prints what stands at the end, when a document was printed; `complete` unless one could not be
  /// read.
  void finish(bool complete);

  [[nodiscard]] const FindingCounts& counts() const noexcept { return counts_; }

 protected:
  /// Before the first document.
  virtual void begin() {}
  virtual void printDocument(const std::string& name, const check::Report& report) = 0;
  virtual void end(bool complete) = 0;

 private:
  FindingCounts counts_;
  bool begun_ = false;
};

/// How a person sees findings.
struct FindingStyle {
  bool source = false;  ///< with the lines of the document
  bool colour = false;
};

/// The findings as compilers print theirs: "FILE:LINE:COLUMN: level: sentence [code]", a line each.
/// Under it, as `style` wants, the line of the document and carets under the place. Their number is
/// the last line.
[[nodiscard]] std::unique_ptr<FindingPrinter> textPrinter(FindingStyle style);

/// One JSON object; what is absent or not known is null.
[[nodiscard]] std::unique_ptr<FindingPrinter> jsonPrinter();

/// A log for code review (SARIF 2.1.0).
[[nodiscard]] std::unique_ptr<FindingPrinter> sarifPrinter();

}  // namespace orvane::nimbrel::tools
