#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Kind.h"
#include "check/Report.h"
#include "tools/Failure.h"

namespace orvane::nimbrel::tools {

/// How many findings there are of each level.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
  std::optional<std::size_t> fixed = std::nullopt;  ///< none unless findings are fixed

  void add(check::Level level) noexcept;
  [[nodiscard]] std::size_t all() const noexcept { return errors + warnings + notes; }
};

/// What output calls a document.
struct DocumentName {
  std::string file;      ///< as it was given: for programs, which can join input and output by it
  std::string document;  ///< for a person: of a package with the entry
};

/// What became of the files.
struct FileCounts {
  std::size_t read = 0;
  std::size_t rejected = 0;  ///< of those that were read
  std::size_t unreadable = 0;
};

/// How often a code was found.
struct CodeCount {
  const check::Kind* kind;
  std::size_t findings = 0;
  std::size_t files = 0;
};

/// Prints what is found in documents to standard output as it comes: nothing is kept of a document
/// that was printed. What the output does not take ends it with `OutputFailure`.
class FindingPrinter {
 public:
  FindingPrinter();
  FindingPrinter(const FindingPrinter&) = delete;
  FindingPrinter& operator=(const FindingPrinter&) = delete;
  virtual ~FindingPrinter() = default;

  /// Prints and counts the findings of a document, and counts those that were fixed in it.
  void print(const DocumentName& name, const check::Report& report,
             std::optional<std::size_t> fixed = std::nullopt);
  /// Says on standard error, and in what is printed for programs, that a file cannot be read, and
  /// counts it.
  void printUnreadable(const std::string& file, const DocumentFailure& failure);
  /// Prints what stands at the end.
  void finish();

  [[nodiscard]] const FindingCounts& counts() const noexcept { return counts_; }
  [[nodiscard]] const FileCounts& files() const noexcept { return files_; }
  /// The codes that were found, in the order of their kinds.
  [[nodiscard]] std::vector<CodeCount> codes() const;

 protected:
  /// Before all else.
  virtual void begin() {}
  virtual void printDocument(const DocumentName& name, const check::Report& report) = 0;
  /// How many findings were fixed in the document that is being printed.
  [[nodiscard]] std::optional<std::size_t> fixedNow() const noexcept { return fixedNow_; }
  virtual void printFailure(const std::string& /*file*/, const DocumentFailure& /*failure*/) {}
  virtual void end() = 0;

 private:
  void beginOnce();

  FindingCounts counts_;
  FileCounts files_;
  std::vector<CodeCount> codes_;  // all kinds
  std::optional<std::size_t> fixedNow_;
  bool begun_ = false;
};

/// How a person sees findings.
struct FindingStyle {
  bool source = false;  ///< with the lines of the document, and how to go on
  bool colour = false;
  bool quiet = false;        ///< with the findings alone
  std::size_t terminal = 0;  ///< columns; 0 when not known
};

/// The findings as compilers print theirs: "FILE:LINE:COLUMN: level: sentence [code]", a line each,
/// and at last their number. As `style` wants, the line of the document follows each, with carets
/// under the place, and at the end how a code is explained.
[[nodiscard]] std::unique_ptr<FindingPrinter> textPrinter(FindingStyle style);

/// One JSON object with an object for each file: its name, "done", "rejected" or "unreadable", why,
/// and its findings. What is absent or not known is null.
[[nodiscard]] std::unique_ptr<FindingPrinter> jsonPrinter();

/// The objects of the files alone, each in a line of its own, at once.
[[nodiscard]] std::unique_ptr<FindingPrinter> jsonLinesPrinter();

/// How often each code was found in all files, instead of the findings: as text, or as a JSON
/// object.
[[nodiscard]] std::unique_ptr<FindingPrinter> summaryPrinter();
[[nodiscard]] std::unique_ptr<FindingPrinter> summaryJsonPrinter(bool inOneLine);

/// Counts and prints nothing.
[[nodiscard]] std::unique_ptr<FindingPrinter> silentPrinter();

/// A log for code review (SARIF 2.1.0).
[[nodiscard]] std::unique_ptr<FindingPrinter> sarifPrinter();

}  // namespace orvane::nimbrel::tools
