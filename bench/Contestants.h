#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvane::nimbrel::bench {

/// What a parse leaves behind; freed with the last pointer.
using Kept = std::shared_ptr<void>;

/// One way of reading a configuration document.
struct Contestant {
  const char* name;
  /// Makes what is made once, and gives what reads one document. Throws `std::runtime_error` when
  /// the document is rejected: a benchmark of rejections would measure nothing.
  std::function<Kept(const std::string& document)> (*prepare)(
      const std::vector<std::string>& locales);
};

/// "bare": `xmlCtxtReadMemory` with a fresh context, and the tree freed. "hand": a straightforward
/// walk over that tree. "ours": `NimbrelConfigParser`.
[[nodiscard]] const std::vector<Contestant>& contestants();

/// The contestant of that name; null when there is none.
[[nodiscard]] const Contestant* findContestant(const std::string& name);

}  // namespace orvane::nimbrel::bench
