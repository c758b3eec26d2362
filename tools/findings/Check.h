#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "config/LegacyFinding.h"

namespace orvane::nimbrel::tools {

/// A finding with texts of its own; its members mean what those of `config::LegacyFinding` mean.
struct CheckedFinding {
  config::LegacyCode code = {};
  std::string element;
  std::string attribute;
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::optional<std::string> value;
  std::string reason;
  std::string suggestion;
};

/// A document that was checked.
struct CheckedDocument {
  std::string name;                      ///< what messages call it
  std::string bytes;                     ///< empty when a package does not give it
  std::vector<CheckedFinding> findings;  ///< by line, those of one line as they were made
};

/// Checks the document that `path` stands for, as `findDocument` takes it, for a user who prefers
/// `locales`.
///
/// Without `locales` it is checked for every language that it speaks: for each `xml:lang` of the
/// root's children as the only one preferred, and for none. Their findings are merged; a note, or
/// what becomes of an element for its language alone, is a finding only if no user gets the
/// element. Of the languages the first 64 count; a line on standard error says when there are more.
///
/// What the library refuses, and a package without a usable document, is a finding too. Throws
/// `Failure` with `EXIT_UNUSABLE` when the document cannot be read.
[[nodiscard]] CheckedDocument checkDocument(const std::string& path,
                                            const std::optional<std::vector<std::string>>& locales);

}  // namespace orvane::nimbrel::tools
