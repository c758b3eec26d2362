#pragma once

#define ZLIB_CONST  // its input is only read
#include <zlib.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// Unpacks one deflated stream without a header, as ZIP archives have it.
class Inflater {
 public:
  /// Throws only `std::bad_alloc`.
  Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() { inflateEnd(&stream_); }

  /// Appends what the next piece of the stream gives, but not much more than `limit` bytes in all.
  /// True at the end of the stream. Throws `ZipProblem` when the stream is damaged.
  bool add(std::string_view packed, std::string& content, std::size_t limit);

 private:
  z_stream stream_ = {};
};

}  // namespace orvane::nimbrel::tools
