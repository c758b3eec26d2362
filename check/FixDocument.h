#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Check.h"
#include "check/Fix.h"

namespace orvane::nimbrel::check {

/// A document in which what is certain was fixed.
struct FixedDocument {
  /// What remains. Its `document()` has the bytes that it is about.
  std::unique_ptr<const Report> report;
  std::size_t count = 0;  ///< how many findings were fixed; with none the bytes are as they were
};

/// Fixes all that is certain in a document; what a fix brings to light is fixed as well, so that
/// doing it again changes nothing. Takes what `checkDocument` takes, and a small multiple of its
/// time, whatever the document.
///
/// Nothing but the places of the fixes changes, in any encoding. No fix is made that leaves its own
/// finding or gives another about the same thing, makes the parser reject a document that it read,
/// gives an element that is there twice or takes one from its users. Of two that are in each
/// other's way the first is made; of very many in a large document none. Throws only
/// `std::bad_alloc`. For any thread.
[[nodiscard]] FixedDocument fixDocument(std::string document, const CheckSettings& settings = {});

/// A document with these fixes made; none when they cannot be written in its encoding.
[[nodiscard]] std::optional<std::string> withFixes(const Report& report,
                                                   const std::vector<Fix>& fixes);

}  // namespace orvane::nimbrel::check
