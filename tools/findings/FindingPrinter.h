#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/FindingCode.h"
#include "check/Fix.h"
#include "check/Report.h"
#include "check/Wording.h"
#include "tools/Failure.h"
#include "tools/output/JsonWriter.h"

namespace orvane::nimbrel::tools {

/// How many findings there are of each level.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
  std::optional<std::size_t> fixed = std::nullopt;  ///< none unless findings are fixed

  void add(check::Level level) noexcept;
  [[nodiscard]] std::size_t all() const noexcept { return errors + warnings + notes; }
  /// "2 fixed; 1 error, 3 notes".
  [[nodiscard]] std::string text() const;
  /// Writes a member for each.
  void write(JsonWriter& json) const;
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

/// A failure in the words of the report's first error, if it has one.
[[nodiscard]] DocumentFailure explained(const DocumentFailure& failure, const std::string& name,
                                        const check::Report& report);

/// What is printed of a finding.
struct ShownFinding {
  const check::Report& report;
  const check::Diagnostic& finding;
  const check::Fix* fix = nullptr;  ///< null when none is certain, and when none is wanted
  const check::CodeDescription& kind = check::descriptionOf(finding.code);
  check::Wording wording = check::wordingOf(finding);
  check::Place place = report.placeOf(finding);
};

/// Calls `visit` with each finding of a report and its fix, in order.
template <typename Visit>
void forEachFinding(const check::Report& report, const Visit& visit) {
  const std::vector<check::Fix> fixes = check::fixesOf(report);
  auto next = fixes.begin();
  for (const check::Diagnostic& finding : report.findings()) {
    const bool isFixed = next != fixes.end() && next->finding == &finding;
    visit(ShownFinding{report, finding, isFixed ? &*next++ : nullptr});
  }
}

/// What became of the files.
struct FileCounts {
  std::size_t read = 0;
  std::size_t rejected = 0;  ///< of those that were read
  std::size_t unreadable = 0;
};

/// Prints what is found in documents to standard output as it comes: nothing is kept of a document
/// that was printed. What the output does not take ends it with `Failure`. As it is, it
/// counts only.
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

  /// Before all else.
  virtual void begin() {}
  /// Prints what stands at the end.
  virtual void finish() {}

  [[nodiscard]] const FindingCounts& counts() const noexcept { return counts_; }
  [[nodiscard]] const FileCounts& files() const noexcept { return files_; }

 protected:
  /// How often a code was found.
  struct CodeCount {
    const check::CodeDescription* kind;
    std::size_t findings = 0;
    std::size_t files = 0;
  };

  /// The codes that were found, in the order of their kinds.
  [[nodiscard]] std::vector<CodeCount> codes() const;

  /// `counts` are those of the document.
  virtual void printDocument(const CheckedDocument& /*document*/, const FindingCounts& /*counts*/) {
  }
  virtual void printFailure(const std::string& /*file*/, const DocumentFailure& /*failure*/) {}

 private:
  FindingCounts counts_;
  FileCounts files_;
  std::vector<CodeCount> codes_;  // all kinds
};

/// What is printed, and how.
struct FindingStyle {
  /// "text": as compilers print theirs, "FILE:LINE:COLUMN: level: sentence [code]", a line each,
  /// and at last their number. With the lines of the document carets under them mark the places,
  /// and the end says how a code is explained.
  ///
  /// "json": one object with an object for each file: its name, "done", "rejected" or "unreadable",
  /// why, and its findings. What is absent or not known is null. "jsonl": the objects of the files
  /// alone, each in a line of its own, at once.
  ///
  /// "sarif": a log for code review (SARIF 2.1.0), without a summary. "": findings are counted.
  std::string format = "text";
  bool summary = false;  ///< how often each code is found in all files, instead of the findings
  bool source = false;   ///< text: with the lines of the document
  bool colour = false;
  bool quiet = false;        ///< text: with the findings alone
  std::size_t terminal = 0;  ///< columns; 0 when not known
};

/// A printer that has begun.
[[nodiscard]] std::unique_ptr<FindingPrinter> makePrinter(const FindingStyle& style);

/// @name What `makePrinter` chooses from
/// @{
[[nodiscard]] std::unique_ptr<FindingPrinter> makeTextPrinter(const FindingStyle& style);
[[nodiscard]] std::unique_ptr<FindingPrinter> makeJsonPrinter(bool inLines);
[[nodiscard]] std::unique_ptr<FindingPrinter> makeSarifPrinter();
/// @}

}  // namespace orvane::nimbrel::tools
