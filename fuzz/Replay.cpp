// Runs saved inputs through a fuzz target without a fuzz engine: seeds, findings, corpora.
//
//     fuzz_iri_replay FILE_OR_DIRECTORY...
//
// Each input lies in a buffer of exactly its size. Exits with 1 when there is no input at all; a
// property that does not hold aborts, after the name of the input.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "fuzz/Property.h"

namespace {

void replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  const std::unique_ptr<unsigned char[]> exact(new unsigned char[bytes.size()]);
  bytes.copy(reinterpret_cast<char*>(exact.get()), bytes.size());
  LLVMFuzzerTestOneInput(exact.get(), bytes.size());
}

}  // namespace

int main(int argumentCount, char** arguments) {
  int count = 0;
  for (int at = 1; at < argumentCount; ++at) {
    if (std::filesystem::is_regular_file(arguments[at])) {
      replay(arguments[at]);
      ++count;
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[at])) {
      if (entry.is_regular_file()) {
        replay(entry.path());
        ++count;
      }
    }
  }
  std::printf("%d inputs\n", count);
  return count == 0 ? 1 : 0;
}
