#pragma once

#include <string_view>

#include "tools/output/JsonWriter.h"

namespace orvane::nimbrel::tools {

/// The rule of files that cannot be read, which has no kind of finding.
inline constexpr char UNREADABLE_FILE[] = "unreadable-file";

/// Writes the members of what a log in SARIF says of the tool: its rules, one for each kind of
/// finding in their order, and its notifications.
void writeSarifTool(JsonWriter& json);

/// Writes a member that is a message of SARIF: with its brackets and braces escaped, as else what a
/// document says could become a link or stand for another text.
void writeSarifMessage(JsonWriter& json, std::string_view name, std::string_view text);

}  // namespace orvane::nimbrel::tools
