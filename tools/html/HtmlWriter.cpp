#include "tools/html/HtmlWriter.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

using util::LocalizableString;

constexpr std::size_t LONGEST_TAG = 35;

/// The reference for a character of markup; empty for any other.
std::string_view referenceFor(char32_t character) noexcept {
  constexpr std::string_view MARKUP = "&<>\"'";
  constexpr std::string_view REFERENCES[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;", ""};
  const std::size_t place =
      character < 0x80 ? MARKUP.find(static_cast<char>(character)) : MARKUP.npos;
  return REFERENCES[std::min(place, MARKUP.size())];
}

/// Whether a joiner behind this character changes how it is drawn: it is a letter that joins, a
/// sign that removes a vowel, or a picture.
bool takesJoiner(char32_t character) noexcept {
  const auto code = static_cast<UChar32>(character);
  const int joining = u_getIntPropertyValue(code, UCHAR_JOINING_TYPE);
  constexpr int VIRAMA = 9;
  return joining == U_JT_DUAL_JOINING || joining == U_JT_RIGHT_JOINING ||
         u_getCombiningClass(code) == VIRAMA ||
         u_hasBinaryProperty(code, UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
}

/// Whether a character is named behind another.
bool isNamed(char32_t character, char32_t previous) noexcept {
  const bool isJoiner = character == 0x200C || character == 0x200D;
  if (isJoiner ? !takesJoiner(previous)
               : u_hasBinaryProperty(static_cast<UChar32>(character),
                                     UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0) {
    return true;
  }
  const bool isControl = character < 0x20 && character != '\n' && character != '\t';
  // XML allows them, HTML does not.
  const bool isNoncharacter =
      (character >= 0xFDD0 && character <= 0xFDEF) || (character & 0xFFFE) == 0xFFFE;
  return isControl || character == 0x7F || isNoncharacter || isUnprintable(character);
}

/// Whether a text has the form of a language tag (BCP 47).
bool isTag(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale::forLanguageTag({text.data(), static_cast<std::int32_t>(text.size())}, status);
  return U_SUCCESS(status) && !text.empty() && text.size() <= LONGEST_TAG;
}

std::size_t charactersOf(std::string_view text) noexcept {
  return text.size() - static_cast<std::size_t>(
                           std::count_if(text.begin(), text.end(), util::internal::isUtf8Trail));
}

const char* elementFor(LocalizableString::Direction direction) noexcept {
  const bool isOverride =
      direction == LocalizableString::LRO || direction == LocalizableString::RLO;
  return isOverride ? "bdo" : "bdi";
}

}  // namespace

void HtmlWriter::flush() {
  writeOutput(html_);
  html_.clear();
}

void HtmlWriter::name(const char* kind, char32_t character, int digits) {
  char shown[64];
  std::snprintf(shown, sizeof(shown), "<span class=\"unseen\">%s%0*X</span>", kind, digits,
                static_cast<unsigned int>(character));
  append(shown);
}

HtmlWriter& HtmlWriter::text(std::string_view text) {
  std::size_t at = 0;
  char32_t previous = 0;
  while (at < text.size()) {
    const std::size_t from = at;
    const char32_t character = util::internal::decodeUtf8(text, at);
    if (const std::string_view reference = referenceFor(character); !reference.empty()) {
      append(reference);
    } else if (character == util::internal::NOT_UTF8) {
      for (std::size_t i = from; i < at; ++i) {
        name("byte ", static_cast<unsigned char>(text[i]), 2);
      }
    } else if ((character >= 0x7F || character < 0x20) && isNamed(character, previous)) {
      name("U+", character, 4);
    } else {
      append(text.substr(from, at - from));
    }
    previous = character;
  }
  return *this;
}

HtmlWriter& HtmlWriter::text(std::string_view text, std::size_t limit) {
  std::string_view shown = firstCharacters(text, limit);
  text.remove_prefix(shown.size());
  for (std::size_t at = 0; (at = shown.find('/')) != std::string_view::npos;) {
    at = std::min(shown.find_first_not_of('/', at), shown.size());
    this->text(shown.substr(0, at)).markup("<wbr/>");
    shown.remove_prefix(at);
  }
  return this->text(shown).more(text);
}

HtmlWriter& HtmlWriter::value(std::string_view text, std::size_t limit) {
  return markup("<bdi>").text(text, limit).markup("</bdi>");
}

/// Says how much is not shown.
HtmlWriter& HtmlWriter::more(std::string_view rest) {
  return rest.empty() ? *this
                      : markup(" <bdi class=\"cut\" lang=\"en\" dir=\"ltr\">… and ")
                            .count(charactersOf(rest), "more character")
                            .markup("</bdi>");
}

HtmlWriter& HtmlWriter::count(std::size_t number, std::string_view noun) {
  return this->number(number).append(" ").append(noun).append(number == 1 ? "" : "s");
}

HtmlWriter& HtmlWriter::base64(std::string_view bytes) {
  constexpr char DIGITS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto byteAt = [&](std::size_t at) {
    return std::uint32_t{static_cast<unsigned char>(at < bytes.size() ? bytes[at] : '\0')};
  };
  for (std::size_t bit = 0; bit < 8 * bytes.size(); bit += 6) {
    const std::uint32_t pair = byteAt(bit / 8) << 8 | byteAt(bit / 8 + 1);
    html_ += DIGITS[pair >> (10 - bit % 8) & 0x3F];
  }
  return append(std::string_view("==").substr(0, (3 - bytes.size() % 3) % 3));
}

HtmlWriter& HtmlWriter::language(std::string_view tag, LocalizableString::Direction direction) {
  const bool isLeftToRight =
      direction == LocalizableString::LTR || direction == LocalizableString::LRO;
  markup(" lang=\"").text(isTag(tag) ? tag : std::string_view());
  return markup("\" dir=\"").append(isLeftToRight ? "ltr" : "rtl").append("\"");
}

HtmlWriter& HtmlWriter::localized(const LocalizableString& text, std::size_t limit) {
  const auto open = [&](std::string_view tag, LocalizableString::Direction direction) {
    append("<").append(elementFor(direction)).language(tag, direction).markup(">");
  };
  const auto close = [&](LocalizableString::Direction direction) {
    append("</").append(elementFor(direction)).markup(">");
  };
  std::size_t shown = 0;
  open(text.getLanguageTag(), text.getDirection());
  for (const LocalizableString::TextNode& run : text.getTextNodes()) {
    const std::string_view part = firstCharacters(run.text, limit);
    if (part.empty()) {
      break;
    }
    const bool isOwn =
        run.languageTag != text.getLanguageTag() || run.direction != text.getDirection();
    if (isOwn) {
      open(run.languageTag, run.direction);
    }
    this->text(part);
    if (isOwn) {
      close(run.direction);
    }
    limit -= charactersOf(part);
    shown += part.size();
  }
  close(text.getDirection());
  return more(std::string_view(text.c_str()).substr(shown));
}

}  // namespace orvane::nimbrel::tools
