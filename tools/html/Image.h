#pragma once

#include <string_view>

namespace orvane::nimbrel::tools {

/// The media type of an image that a browser can show as an icon without harm; null for any other
/// file.
///
/// PNG, GIF and JPEG of up to 1024 pixels each way, so that little becomes no gigabyte of pixels.
/// SVG of shapes, texts and gradients alone: what refers to other parts can be nested so that
/// drawing it never ends. Throws only `std::bad_alloc`.
[[nodiscard]] const char* imageTypeOf(std::string_view bytes);

}  // namespace orvane::nimbrel::tools
