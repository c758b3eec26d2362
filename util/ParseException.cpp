#include "util/ParseException.h"

namespace orvane::nimbrel {

ParseException::ParseException(const std::string& message, std::uint32_t lineNumber,
                               std::uint32_t columnNumber)
    : std::runtime_error(message), line(lineNumber), column(columnNumber) {}

ParseException::~ParseException() = default;

}  // namespace orvane::nimbrel
