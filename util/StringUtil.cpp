#include "util/StringUtil.h"

#include <algorithm>
#include <cstddef>

#include "util/Ascii.h"

namespace orvane::zel::util {
namespace {
namespace ascii = nimbrel::util::ascii;

/// The length of the part in front that `squeeze` leaves as it is. The rest is empty or begins with
/// a run of white space that has to change.
std::size_t squeezedPrefix(std::string_view text) noexcept {
  const char* const end = text.data() + text.size();
  // A lambda, since a call through a pointer for each byte would take more time than the rest.
  const auto nextWhite = [end](const char* from) {
    return std::find_if(from, end, [](char byte) { return ascii::isSpace(byte); });
  };
  const char* at = nextWhite(text.data());
  while (at != end && *at == ' ' && (at + 1 == end || !ascii::isSpace(at[1]))) {
    at = nextWhite(at + 1);
  }
  return static_cast<std::size_t>(at - text.data());
}

/// Squeezes what stands from `from` on, in place.
void squeezeFrom(std::string& text, std::size_t from) {
  std::size_t write = from;
  bool afterWhite = false;
  for (std::size_t read = from; read < text.size(); ++read) {
    const bool white = ascii::isSpace(text[read]);
    if (!white) {
      text[write++] = text[read];
    } else if (!afterWhite) {
      text[write++] = ' ';
    }
    afterWhite = white;
  }
  text.resize(write);
}

}  // namespace

bool StringUtil::isSpace(char byte) noexcept {
  return ascii::isSpace(byte);
}

std::string_view StringUtil::trimmed(std::string_view text) noexcept {
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (begin < end && ascii::isSpace(text[begin])) {
    ++begin;
  }
  while (begin < end && ascii::isSpace(text[end - 1])) {
    --end;
  }
  return text.substr(begin, end - begin);
}

void StringUtil::trim(std::string& text) {
  const std::string_view kept = trimmed(text);
  const auto begin = static_cast<std::size_t>(kept.data() - text.data());
  text.resize(begin + kept.size());
  text.erase(0, begin);
}

void StringUtil::squeeze(std::string& text) {
  if (const std::size_t prefix = squeezedPrefix(text); prefix < text.size()) {
    squeezeFrom(text, prefix);
  }
}

std::string StringUtil::squeezeAndTrim(std::string_view text) {
  std::string result(trimmed(text));
  squeeze(result);
  return result;
}

std::vector<std::string> StringUtil::split(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  if (text.empty()) {
    return pieces;
  }
  pieces.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)) + 1);
  std::size_t begin = 0;
  for (std::size_t end = text.find(separator); end != std::string::npos;
       end = text.find(separator, begin)) {
    pieces.emplace_back(text, begin, end - begin);
    begin = end + 1;
  }
  pieces.emplace_back(text, begin);
  return pieces;
}

}  // namespace orvane::zel::util
