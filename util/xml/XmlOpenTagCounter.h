#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::util::internal {

/// Counts the attributes of a start tag that has not ended yet: libxml2 would compare each with
/// each of the others before it hands out any.
///
/// It reads the document piece by piece, and looks only at what follows the last "<" of each piece,
/// since no "<" can stand within a tag. What only looks like a tag, in a comment or a CDATA
/// section, counts as one.
class XmlOpenTagCounter {
 public:
  /// Reads the next piece.
  void scan(std::string_view piece) noexcept;

  /// Those of the tag that has not ended with the last piece; 0 when there is none.
  [[nodiscard]] std::size_t attributes() const noexcept { return isOpen() ? attributes_ : 0; }
  [[nodiscard]] std::size_t namespaces() const noexcept { return isOpen() ? namespaces_ : 0; }

 private:
  enum class State { NO_TAG, TAG_NAME, BETWEEN, NAME, EQUALS, BEFORE_VALUE, VALUE };

  [[nodiscard]] bool isOpen() const noexcept { return state_ != State::NO_TAG; }
  void begin() noexcept;
  void step(char c) noexcept;
  void stepInName(char c) noexcept;

  State state_ = State::NO_TAG;
  char quote_ = '"';
  std::size_t nameSize_ = 0;  // how much of the name of the attribute is known
  bool isNamespace_ = false;  // so far
  std::size_t attributes_ = 0;
  std::size_t namespaces_ = 0;
};

}  // namespace orvane::nimbrel::util::internal
