#pragma once

#include <string>

#include "tools/record/RecordJson.h"

namespace orvane::nimbrel::tools {

/// Throws `Failure` with `EXIT_UNUSABLE` unless some record may have a field of this name: a key of
/// the record's JSON object, or a path of them with dots between ("startFile.src", "icons.0.src").
void requireField(const std::string& name);

/// The field of a record's JSON object; null when this record has none.
[[nodiscard]] Json fieldOf(const Json& record, const std::string& name);

/// A field for a script: one line for each value, after `prefix`. Nothing for null; a text without
/// its language; the entries of a list; an object as JSON. Control characters are escaped.
[[nodiscard]] std::string fieldToText(const Json& field, const std::string& prefix);

}  // namespace orvane::nimbrel::tools
