#pragma once

#include <string>
#include <vector>

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
/// words and namespaces, a size with its unit, an origin with a path. The start and the end tag of
/// an element change together. Nothing of a document with elements in entities is fixed, nor what
/// would stand twice in a tag or cannot be written in the document's encoding.
///
/// Takes time and memory in proportion to the document. The fixes point into the report. Throws
/// only `std::bad_alloc`. For any thread.
[[nodiscard]] std::vector<Fix> fixesOf(const Report& report);

}  // namespace orvane::nimbrel::check
