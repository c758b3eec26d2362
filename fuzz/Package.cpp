// A packaged widget: the bytes of an archive.
//
// It is rejected with a reason, or gives a document of at most 16 MiB, and nothing outside of it is
// asked for that there is not.

#include "tools/input/Package.h"

#include <string>
#include <string_view>

#include "fuzz/Property.h"
#include "tools/Failure.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::nimbrel;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto read = [&](std::uint64_t at, std::size_t count) {
    fuzz::require(at <= size, "what is read lies within the archive");
    return std::string(bytes.substr(static_cast<std::size_t>(at), count));
  };
  try {
    const std::string document = tools::readPackage(read, size, "p");
    fuzz::require(document.size() <= std::size_t{16} * 1024 * 1024, "a document has a limit");
  } catch (const tools::DocumentFailure& failure) {
    fuzz::require(failure.status() == tools::EXIT_REJECTED, "the archive was read");
    fuzz::require(!failure.problem().reason.empty(), "there is a reason");
  }
  return 0;
}
