#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/FindingCode.h"
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

/// A document that was checked.
struct CheckedDocument {
  std::string file;  ///< as it was given: for programs, which can join input and output by it
  std::string name;  ///< for a person: of a package with the entry
  std::shared_ptr<const check::Report> report;      ///< what was found
  std::optional<std::size_t> fixed = std::nullopt;  ///< how many findings were fixed, if any could
};

/// The report on a document that cannot be had, such as that of a faulty package.
[[nodiscard]] std::unique_ptr<const check::Report> reportOf(const DocumentFailure& failure);

/// What became of the files.
struct FileCounts {
  std::size_t read = 0;
  std::size_t rejected = 0;  ///< of those that were read
  std::size_t unreadable = 0;
};

/// How often a code was found.
struct CodeCount {
  const check::CodeDescription* kind;
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
  void print(const CheckedDocument& document);
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
  virtual void printDocument(const CheckedDocument& document) = 0;
  virtual void printFailure(const std::string& /*file*/, const DocumentFailure& /*failure*/) {}
  virtual void end() = 0;

 private:
  void beginOnce();

  FindingCounts counts_;
  FileCounts files_;
  std::vector<CodeCount> codes_;  // all kinds
  bool begun_ = false;
};

/// What is printed, and how.
struct FindingStyle {
  enum class Format {
    /// As compilers print theirs: "FILE:LINE:COLUMN: level: sentence [code]", a line each, and at
    /// last their number. With the lines of the document carets under them mark the places, and the
    /// end says how a code is explained.
    TEXT,
    /// One object with an object for each file: its name, "done", "rejected" or "unreadable", why,
    /// and its findings. What is absent or not known is null.
    JSON,
    JSON_LINES,  ///< the objects of the files alone, each in a line of its own, at once
    SARIF,       ///< a log for code review (SARIF 2.1.0), without a summary
    NOTHING      ///< findings are counted only
  };
  Format format = Format::TEXT;
  bool summary = false;  ///< how often each code is found in all files, instead of the findings
  bool source = false;   ///< text: with the lines of the document
  bool colour = false;
  bool quiet = false;        ///< text: with the findings alone
  std::size_t terminal = 0;  ///< columns; 0 when not known
};
[[nodiscard]] std::unique_ptr<FindingPrinter> makePrinter(const FindingStyle& style);

/// @name What `makePrinter` chooses from
/// @{
[[nodiscard]] std::unique_ptr<FindingPrinter> makeTextPrinter(const FindingStyle& style);
[[nodiscard]] std::unique_ptr<FindingPrinter> makeJsonPrinter(const FindingStyle& style);
[[nodiscard]] std::unique_ptr<FindingPrinter> makeSarifPrinter();
/// @}

}  // namespace orvane::nimbrel::tools
