#pragma once

namespace orvane::nimbrel::tools {

/// Makes the device's answer to the query for the screen density, which fails otherwise. To be
/// called before a document is parsed.
void answerDensity(int density) noexcept;

/// Switches the library's debug lines on and copies every line that it logs to standard error, with
/// control characters escaped. To be called before a document is parsed.
void copyLogToStandardError() noexcept;

}  // namespace orvane::nimbrel::tools
