// A packaged widget: the bytes of an archive.
//
// It is rejected with a reason, or gives a document of at most 16 MiB, whose findings have a
// sentence each; and nothing outside of it is asked for that there is not.

#include "tools/input/Package.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Check.h"
#include "check/Wording.h"
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
    const tools::Package package(read, size, "p");
    const std::string document = package.document();
    fuzz::require(document.size() <= std::size_t{16} * 1024 * 1024, "a document has a limit");
    using Locales = std::optional<std::vector<std::string>>;
    for (const Locales& locales : {Locales(), Locales({"en-US"})}) {
      const auto report = check::checkDocument(document, {locales, 0, package.contents()});
      for (const check::Diagnostic& finding : report->findings()) {
        const check::Wording wording = check::wordingOf(finding);
        fuzz::require(!wording.sentence.empty() &&
                          (wording.suggestion.empty() || wording.suggestion != wording.value),
                      "a finding has a sentence, and suggests something else");
      }
    }
  } catch (const tools::DocumentFailure& failure) {
    fuzz::require(failure.status() == tools::EXIT_REJECTED, "the archive was read");
    fuzz::require(!failure.problem().reason.empty(), "there is a reason");
  }
  return 0;
}
