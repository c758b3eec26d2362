#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "config/Api.h"
#include "config/Config.h"
#include "util/SharedPtr.h"

namespace orvane::nimbrel::config {

/// Turns a document into a record. `createConfigParser` makes one, and says why one for each.
///
/// One parser serves one thread at a time; its records may be read from any thread. After a parse
/// that throws, the parser may be used again and earlier records are as they were (basic
/// guarantee).
class NIMBREL_CONFIG_API ConfigParser {
 public:
  /// A document was rejected as a whole. `what()` is one line.
  class NIMBREL_CONFIG_API ConfigException : public std::runtime_error {
   public:
    /// `line` and `column` count from 1; 0 means unknown.
    ConfigException(const std::string& message, std::uint32_t line, std::uint32_t column);
    ConfigException(const ConfigException&) = default;
    ConfigException& operator=(const ConfigException&) = default;
    ~ConfigException() override;

    std::uint32_t line;    ///< Line of the document, counted from 1; 0 when unknown.
    std::uint32_t column;  ///< Column in that line, counted from 1; 0 when unknown.
  };

  virtual ~ConfigParser();

  /// Parses `size` bytes at `buffer`, which is not kept. `url` names the document, `encoding`
  /// overrides its encoding; both may be null, and an empty `encoding` counts as null.
  ///
  /// Throws `std::invalid_argument` for a null buffer, `ConfigException` for a document that is
  /// rejected, and, from integer settings with an empty or too large value, `std::invalid_argument`
  /// or `std::overflow_error` "input". Never returns null.
  virtual std::shared_ptr<Config> parse(const char* buffer, unsigned int size, const char* url,
                                        const char* encoding) = 0;

  /// Parses the local regular file at `path`; all else as above.
  virtual std::shared_ptr<Config> parse(const char* path, const char* encoding) = 0;

 protected:
  ConfigParser() = default;
  ConfigParser(const ConfigParser&) = default;
  ConfigParser& operator=(const ConfigParser&) = default;
};

}  // namespace orvane::nimbrel::config
