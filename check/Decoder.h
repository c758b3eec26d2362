#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::check {

/// The name of a document's encoding, as the XML parser finds it; empty for UTF-8, nothing for one
/// that is not accepted.
[[nodiscard]] std::optional<std::string> encodingOf(std::string_view document);

/// Whether an encoding has this name. Throws only `std::bad_alloc`.
[[nodiscard]] bool isKnownEncoding(const std::string& name);

/// Decodes a document of an encoding that `encodingOf` names into UTF-8, without a byte order mark.
/// `bytes` gets the offset in the document of each code point, and its size at last. False, with
/// nothing changed, when the encoding is not known. What is no character becomes U+FFFD. Throws
/// only `std::bad_alloc`.
[[nodiscard]] bool decode(std::string_view document, const std::string& encoding, std::string& text,
                          std::vector<std::uint32_t>& bytes);

/// Appends a code point, which must be one of Unicode, in UTF-8.
void appendUtf8(std::string& text, std::int32_t codePoint);

/// Encodes UTF-8 in an encoding that `encodingOf` names. Nothing when the encoding is not known or
/// has no such character. Throws only `std::bad_alloc`.
[[nodiscard]] std::optional<std::string> encode(std::string_view text, const std::string& encoding);

}  // namespace orvane::nimbrel::check
