#include "config/ConfigParser.h"

namespace orvane::nimbrel::config {

ConfigParser::~ConfigParser() = default;

ConfigParser::ConfigException::ConfigException(const std::string& message, std::uint32_t lineNumber,
                                               std::uint32_t columnNumber)
    : std::runtime_error(message), line(lineNumber), column(columnNumber) {}

ConfigParser::ConfigException::~ConfigException() = default;

}  // namespace orvane::nimbrel::config
