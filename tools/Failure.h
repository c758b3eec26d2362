#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "config/ConfigParser.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::tools {

/// What the tool tells its caller; part of its interface.
enum ExitStatus : int {
  EXIT_DONE = 0,
  EXIT_REJECTED = 1,  ///< the document was rejected, or the identifier refused
  EXIT_UNUSABLE = 2   ///< wrong usage, input that cannot be read, output that cannot be written
};

/// Ends the run: with this status, after this one line on standard error.
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& line) : std::runtime_error(line), status_(status) {}

  [[nodiscard]] ExitStatus status() const noexcept { return status_; }

 private:
  ExitStatus status_;
};

/// Ends the run whatever else there is to do: nothing can be printed any more.
class OutputFailure : public Failure {
 public:
  explicit OutputFailure(const std::string& line) : Failure(EXIT_UNUSABLE, line) {}
};

/// A document's rejection as "FILE:LINE:COLUMN: message"; a line or column of 0 is left out.
inline Failure rejection(std::string file, std::uint32_t line, std::uint32_t column,
                         const char* message) {
  if (line != 0) {
    file += ':' + std::to_string(line);
    if (column != 0) {
      file += ':' + std::to_string(column);
    }
  }
  return {EXIT_REJECTED, file + ": " + message};
}

/// What `read` makes of the document called `file`. All that the library throws to reject one
/// becomes a `Failure`.
template <typename Read>
auto readingDocument(const std::string& file, Read&& read) {
  try {
    return std::forward<Read>(read)();
  } catch (const config::ConfigParser::ConfigException& error) {
    throw rejection(file, error.line, error.column, error.what());
  } catch (const ParseException& error) {
    throw rejection(file, error.line, error.column, error.what());
  } catch (const std::invalid_argument& error) {
    throw rejection(file, 0, 0, error.what());
  } catch (const std::overflow_error& error) {
    throw rejection(file, 0, 0, error.what());
  }
}

}  // namespace orvane::nimbrel::tools
