#pragma once

#include <cerrno>
#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "check/FindingCode.h"
#include "config/ConfigParser.h"
#include "tools/output/Escape.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::tools {

/// What the tool tells its caller; part of its interface.
enum ExitStatus : int {
  EXIT_DONE = 0,
  EXIT_REJECTED = 1,  ///< the document was rejected, or the identifier
  EXIT_UNUSABLE = 2   ///< wrong usage, input that cannot be read, output that cannot be written
};

/// "FILE:LINE:COLUMN" without what is 0, which is not known.
inline std::string placed(std::string place, std::uint32_t line, std::uint32_t column) {
  place += line == 0 ? "" : ':' + std::to_string(line);
  return line == 0 || column == 0 ? place : place + ':' + std::to_string(column);
}

/// Ends the run: with this status, after this one line on standard error. What anybody may have
/// written is escaped in it already.
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& line) : std::runtime_error(line), status_(status) {}

  [[nodiscard]] ExitStatus status() const noexcept { return status_; }

 private:
  ExitStatus status_;
};

/// Ends the work on one document: "FILE:LINE:COLUMN: reason".
class DocumentFailure : public Failure {
 public:
  /// What is wrong and where, as the library or the system put it; a line or column of 0 is
  /// unknown. Of a finding it is the sentence.
  struct Problem {
    std::string reason;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::optional<check::FindingCode> code = std::nullopt;
  };

  DocumentFailure(ExitStatus status, const std::string& file, Problem problem)
      : Failure(status, lineOf(file, problem)), problem_(std::move(problem)) {}

  [[nodiscard]] const Problem& problem() const noexcept { return problem_; }

 private:
  static std::string lineOf(const std::string& file, const Problem& problem) {
    const std::string line = placed(escape(file), problem.line, problem.column);
    return problem.code ? line + ": error: " + escapeUnprintable(problem.reason) + " [" +
                              std::string(check::descriptionOf(*problem.code).name) + ']'
                        : line + ": " + escape(problem.reason);
  }

  Problem problem_;
};

/// The system has no bytes of a file, or entries of a directory, for this reason. Throws
/// `std::bad_alloc` when that is a lack of memory, be it for the exception itself.
inline DocumentFailure unreadable(const std::string& path, int error) {
  if (error == ENOMEM) {
    throw std::bad_alloc();
  }
  return {EXIT_UNUSABLE, path, {"cannot be read: " + std::generic_category().message(error)}};
}

/// What `read` makes of the document called `file`. All that the library throws to reject one
/// becomes a `DocumentFailure`.
template <typename Read>
auto readingDocument(const std::string& file, Read&& read) {
  const auto rejection = [&](const char* reason, std::uint32_t line = 0, std::uint32_t column = 0) {
    return DocumentFailure(EXIT_REJECTED, file, {reason, line, column});
  };
  try {
    return std::forward<Read>(read)();
  } catch (const config::ConfigParser::ConfigException& error) {
    throw rejection(error.what(), error.line, error.column);
  } catch (const ParseException& error) {
    throw rejection(error.what(), error.line, error.column);
  } catch (const std::invalid_argument& error) {
    throw rejection(error.what());
  } catch (const std::overflow_error& error) {
    throw rejection(error.what());
  }
}

}  // namespace orvane::nimbrel::tools
