#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::tools {

/// Tells the lines of a file apart by what begins there, as code scanning services do for the
/// fingerprint "primaryLocationLineHash", so that a finding is known again when lines are added.
class LineHashes {
 public:
  /// `text` is UTF-8, with its byte order mark.
  explicit LineHashes(std::string_view text);

  /// The hash of a line, counted from 1, and how many so far have it; empty for no line.
  [[nodiscard]] std::string of(std::size_t line) const;

 private:
  std::vector<std::string> hashes_;
};

}  // namespace orvane::nimbrel::tools
