#pragma once

#include <cstddef>
#include <string_view>

#include "check/FindingCode.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// How bad a finding is.
enum class Level {
  NOTE,     ///< nothing is wrong, but it may not be what was meant
  WARNING,  ///< something is ignored, or does not work in its package
  ERROR     ///< the document is rejected
};

/// "error", "warning" or "note". For any thread; never throws.
[[nodiscard]] std::string_view levelName(Level level) noexcept;

/// What a code means to an author.
struct Kind {
  FindingCode code;          ///< whose kind this is
  std::string_view name;     ///< stable, lower case with hyphens, such as "not-an-iri"
  Level level;               ///< how bad it is
  std::string_view summary;  ///< what is wrong and what to write, in one sentence
  /// A document with this finding: the children of the root, or a whole document if it begins with
  /// "<widget". A comment in front names the files of its package, where one is needed.
  std::string_view bad;
  std::string_view fixed;  ///< the same without it; empty where nothing has to be fixed
};

/// The kind of a code. For any thread; never throws.
[[nodiscard]] const Kind& kindOf(FindingCode code) noexcept;

/// All kinds, in the order of their codes. For any thread; never throws.
[[nodiscard]] config::DescriptionList<Kind> kinds() noexcept;

}  // namespace orvane::nimbrel::check
