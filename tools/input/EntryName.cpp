#include "tools/input/EntryName.h"

#include <string_view>

#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::uint16_t IS_UTF8 = 0x800;

/// The upper half of code page 437, each character in UTF-8.
constexpr const char* UPPER_HALF[] = {
    "Ç", "ü", "é", "â", "ä", "à", "å", "ç", "ê", "ë", "è", "ï", "î", "ì", "Ä", "Å",
    "É", "æ", "Æ", "ô", "ö", "ò", "û", "ù", "ÿ", "Ö", "Ü", "¢", "£", "¥", "₧", "ƒ",
    "á", "í", "ó", "ú", "ñ", "Ñ", "ª", "º", "¿", "⌐", "¬", "½", "¼", "¡", "«", "»",
    "░", "▒", "▓", "│", "┤", "╡", "╢", "╖", "╕", "╣", "║", "╗", "╝", "╜", "╛", "┐",
    "└", "┴", "┬", "├", "─", "┼", "╞", "╟", "╚", "╔", "╩", "╦", "╠", "═", "╬", "╧",
    "╨", "╤", "╥", "╙", "╘", "╒", "╓", "╫", "╪", "┘", "┌", "█", "▄", "▌", "▐", "▀",
    "α", "ß", "Γ", "π", "Σ", "σ", "µ", "τ", "Φ", "Θ", "Ω", "δ", "∞", "φ", "ε", "∩",
    "≡", "±", "≥", "≤", "⌠", "⌡", "÷", "≈", "°", "∙", "·", "√", "ⁿ", "²", "■", "\u00A0"};
static_assert(sizeof(UPPER_HALF) / sizeof(*UPPER_HALF) == 128);

bool isUtf8(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    if (util::internal::decodeUtf8(text, at) == util::internal::NOT_UTF8) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string textOf(const ZipEntry& entry) {
  if ((entry.flags & IS_UTF8) != 0 || isUtf8(entry.name)) {
    return std::string(entry.name);
  }
  if (!entry.unicodeName.empty()) {
    return std::string(entry.unicodeName);
  }
  std::string text;
  for (const char c : entry.name) {
    const auto byte = static_cast<unsigned char>(c);
    byte < 0x80 ? text += c : text += UPPER_HALF[byte - 0x80];
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
