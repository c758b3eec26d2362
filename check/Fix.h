#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Check.h"
#include "check/Report.h"
#include "check/SourceText.h"

namespace orvane::nimbrel::check {

/// A change of the text of a document.
struct Edit {
  Span span;         ///< what is replaced; empty where something is inserted
  std::string text;  ///< what is written instead, in UTF-8, escaped for its place
};

/// What fixes a finding.
struct Fix {
  const Diagnostic* finding;  ///< one of the report's
  /// In any order. Several findings may need the same edit, such as one of a namespace; otherwise
  /// edits do not overlap.
  std::vector<Edit> edits;
  bool isNamespace = false;  ///< whether a declaration of a namespace is changed or added
};

/// How to fix those findings for which only one thing can have been meant: misspelt names, keys,
/// words and namespaces, a size with its unit, an origin with a path or a wildcard. The start and
/// the end tag of an element change together. Nothing of a document with elements in entities is
/// fixed, nor what would stand twice in a tag or cannot be written in the document's encoding.
///
/// Takes time and memory in proportion to the document. The fixes point into the report. Throws
/// only `std::bad_alloc`. For any thread.
[[nodiscard]] std::vector<Fix> fixesOf(const Report& report);

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
