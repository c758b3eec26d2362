#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orvane::nimbrel::bench {

/// libxml2's tree of a document, read by `xmlCtxtReadMemory` with a fresh context. Throws
/// `std::runtime_error` when it is rejected.
[[nodiscard]] std::shared_ptr<void> readTree(const std::string& document);

/// A record made by a walk over that tree, written as one writes such a thing without thinking of
/// speed: properties as strings, one question after the other for each element, lists searched.
/// Keeps the tree, as our record does. Throws like `readTree`.
[[nodiscard]] std::shared_ptr<void> readByHand(const std::string& document,
                                               const std::vector<std::string>& locales);

}  // namespace orvane::nimbrel::bench
