#include "check/NearestName.h"

#include <algorithm>

#include "util/Ascii.h"

namespace orvane::nimbrel::check {
namespace {

bool isSame(char left, char right) noexcept {
  return util::ascii::lowerCase(left) == util::ascii::lowerCase(right);
}

/// Whether two texts differ in one letter; case does not count.
bool differInOneLetter(std::string_view left, std::string_view right) noexcept {
  if (left.size() > right.size()) {
    std::swap(left, right);
  }
  std::size_t start = 0;
  while (start < left.size() && isSame(left[start], right[start])) {
    ++start;
  }
  const std::string_view restOfLeft = left.substr(start);
  const std::string_view restOfRight = right.substr(start);
  if (left.size() == right.size()) {
    const bool exchanged = restOfLeft.size() >= 2 && isSame(restOfLeft[0], restOfRight[1]) &&
                           isSame(restOfLeft[1], restOfRight[0]) &&
                           isSameInAnyCase(restOfLeft.substr(2), restOfRight.substr(2));
    return exchanged ||
           (!restOfLeft.empty() && isSameInAnyCase(restOfLeft.substr(1), restOfRight.substr(1)));
  }
  return left.size() + 1 == right.size() && isSameInAnyCase(restOfLeft, restOfRight.substr(1));
}

}  // namespace

bool isSameInAnyCase(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return isSame(a, b); });
}

void NearestName::Candidate::add(std::string_view known) noexcept {
  if (count == 0 || name != known) {
    name = known;
    ++count;
  }
}

void NearestName::consider(std::string_view known) noexcept {
  if (isSameInAnyCase(written_, known)) {
    byCase_.add(known);
  } else if (differInOneLetter(written_, known)) {
    byLetter_.add(known);
  }
}

std::string_view NearestName::get() const noexcept {
  for (const Candidate& candidate : {byCase_, byLetter_}) {
    if (candidate.count != 0) {
      return candidate.count == 1 ? candidate.name : std::string_view();
    }
  }
  return {};
}

std::string_view suggestedWord(std::string_view written, std::string_view on,
                               std::string_view off) noexcept {
  constexpr struct {
    std::string_view yes;
    std::string_view no;
  } PAIRS[] = {{"true", "false"}, {"yes", "no"}};
  if (isSameInAnyCase(written, on) || isSameInAnyCase(written, off)) {
    return isSameInAnyCase(written, on) ? on : off;
  }
  // A switch may be thrown by a "no".
  const bool thrownByNo = std::any_of(std::begin(PAIRS), std::end(PAIRS),
                                      [&](const auto& pair) { return on == pair.no; });
  for (const auto& pair : PAIRS) {
    if (isSameInAnyCase(written, pair.yes) || isSameInAnyCase(written, pair.no)) {
      return isSameInAnyCase(written, pair.yes) != thrownByNo ? on : off;
    }
  }
  return {};
}

}  // namespace orvane::nimbrel::check
