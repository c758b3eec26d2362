#include "tools/input/Inflater.h"

#include <algorithm>
#include <new>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t PIECE = 65536;

}  // namespace

Inflater::Inflater() {
  if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) {  // without a header
    throw std::bad_alloc();
  }
}

bool Inflater::add(std::string_view packed, std::string& content, std::size_t limit) {
  stream_.next_in = reinterpret_cast<const Bytef*>(packed.data());
  stream_.avail_in = static_cast<uInt>(packed.size());
  // Enough for most documents at once, and not much to be zeroed in vain.
  const std::size_t room = std::clamp<std::size_t>(packed.size() * 4, PIECE / 16, PIECE);
  do {
    const std::size_t used = content.size();
    content.resize(used + room);
    stream_.next_out = reinterpret_cast<Bytef*>(content.data()) + used;
    stream_.avail_out = static_cast<uInt>(room);
    const int result = ::inflate(&stream_, Z_NO_FLUSH);
    content.resize(content.size() - stream_.avail_out);
    if (result == Z_MEM_ERROR) {
      throw std::bad_alloc();
    }
    if (result == Z_STREAM_END) {
      return true;
    }
    if (result != Z_OK && result != Z_BUF_ERROR) {
      throw ZipProblem("is damaged");
    }
  } while (content.size() <= limit && (stream_.avail_in != 0 || stream_.avail_out == 0));
  return false;
}

}  // namespace orvane::nimbrel::tools
