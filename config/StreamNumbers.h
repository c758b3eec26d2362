#pragma once

#include <string>

// Numbers as a formatted stream extraction (`stream >> number`) in the classic locale reads them,
// whatever locale the host has set, and without a stream: leading white space is skipped, reading
// stops at the first character that cannot continue the number, what is no number reads as 0 (so
// does "1e", whose exponent is missing), and a number too large as the type's limit. From an empty
// text nothing is read and `start` comes back.
namespace orvane::nimbrel::config::detail {

[[nodiscard]] int extractInt(const std::string& text, int start);
[[nodiscard]] float extractFloat(const std::string& text, float start);
[[nodiscard]] double extractDouble(const std::string& text, double start);

}  // namespace orvane::nimbrel::config::detail
