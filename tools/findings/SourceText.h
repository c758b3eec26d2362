#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::tools {

/// The lines of a document as its author sees them. The bytes are the caller's and have to live as
/// long.
class SourceText {
 public:
  explicit SourceText(std::string_view document);

  /// A line, counted from 1, without its end. Null data for a line that there is not, and for all
  /// of a document whose encoding does not have ASCII's bytes for ASCII's characters: what an
  /// editor shows of it is not known.
  [[nodiscard]] std::string_view line(std::uint32_t number) const noexcept;

 private:
  std::string_view document_;
  std::vector<std::size_t> starts_;  // of the lines
};

}  // namespace orvane::nimbrel::tools
