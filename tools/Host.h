#pragma once

namespace orvane::nimbrel::tools {

/// Keeps libxml2 from writing to standard error, which it does by itself when memory runs out. To
/// be called before a document is parsed.
void silenceXml() noexcept;

/// Keeps freed memory for the next document. The C library would give it back to the system after
/// each of many, which takes a third of the time. To be called before threads are started.
void keepFreedMemory() noexcept;

/// Makes the device's answer to the query for the screen density, which fails otherwise. To be
/// called before a document is parsed.
void answerDensity(int density) noexcept;

/// Switches the library's debug lines on and copies every line that it logs to standard error, with
/// control characters escaped. To be called before a document is parsed.
void copyLogToStandardError() noexcept;

}  // namespace orvane::nimbrel::tools
