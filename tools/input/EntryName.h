#pragma once

#include <string>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {

/// The name of an entry in UTF-8.
///
/// A name that the archive calls UTF-8, or that is UTF-8 without it, is taken as it is. Any other
/// one is what its field for UTF-8 says; without that, it is in code page 437, as the format
/// (APPNOTE.TXT, appendix D) and W3C Widgets say. Throws only `std::bad_alloc`.
[[nodiscard]] std::string textOf(const ZipEntry& entry);

}  // namespace orvane::nimbrel::tools
