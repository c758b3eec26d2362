#include <algorithm>
#include <iterator>

#include "check/Markup.h"
#include "check/XmlMistake.h"
#include "util/Utf8.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::check {
namespace {

/// Whether this is a sentence of our own, about a limit. Those of libxml2 differ by version.
bool isOfLimit(std::string_view message) noexcept {
  constexpr std::string_view BEGINNINGS[] = {"Too many ",
                                             "A text is too long",
                                             "A language tag is too long",
                                             "Elements are nested too",
                                             "Entities ",
                                             "The declaration is",
                                             "Internal parameter entities are",
                                             "The document is empty"};
  return std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS),
                     [&](std::string_view begin) { return hasAt(message, 0, begin); });
}

/// The first character that may not stand in a document.
std::optional<XmlMistake> wrongCharacter(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    const char32_t c = util::internal::decodeUtf8(text, at);
    if (c == util::internal::NOT_UTF8) {
      return XmlMistake{{begin, begin + 1},
                        "The bytes are not UTF-8; save the document as UTF-8, or declare its "
                        "encoding in the first line."};
    }
    if (!isXmlCharacter(c)) {
      const std::string number = std::to_string(static_cast<std::uint32_t>(c));
      return XmlMistake{{begin, at}, "Remove the character with the number " + number + '.'};
    }
  }
  return std::nullopt;
}

/// Where a document declares its encoding.
Span declaredEncoding(std::string_view text) noexcept {
  const std::string_view name = util::internal::declarationOf(text).encoding;
  const std::size_t begin = name.empty() ? 0 : static_cast<std::size_t>(name.data() - text.data());
  return {begin, begin + name.size()};
}

/// The reference in or behind which the parser stopped, if it did so at one: versions of libxml2
/// differ in the place.
Span referenceAt(std::string_view text, Span stopped) noexcept {
  const std::size_t begin = text.find_last_of("&%", stopped.begin);
  if (begin == std::string_view::npos) {
    return stopped;
  }
  const Span name = nameAt(text, begin + 1);
  const bool isThere =
      !name.isEmpty() && hasAt(text, name.end, ";") && name.end + 1 >= stopped.begin;
  return isThere ? Span{begin, name.end + 1} : stopped;
}

}  // namespace

XmlMistake explainXml(const SourceText& source, std::string_view message, std::uint32_t line,
                      std::uint32_t column) {
  constexpr std::string_view UNKNOWN = "Unsupported encoding ";
  const std::string_view text = source.text();
  if (hasAt(message, 0, UNKNOWN)) {
    return {declaredEncoding(text), "Unknown encoding \"" +
                                        std::string(message.substr(UNKNOWN.size())) +
                                        "\"; save the document as UTF-8."};
  }
  if (hasAt(message, 0, "Document labelled ")) {
    const Span name = declaredEncoding(text);
    return {name, "The document declares " +
                      std::string(text.substr(name.begin, name.end - name.begin)) +
                      ", but is UTF-8; correct what it declares."};
  }
  const std::size_t stopped = line == 0 ? text.size() : source.offsetOf(line, column);
  const Span there =
      referenceAt(text, {stopped, line == 0 ? stopped : source.offsetOf(line, column + 1)});
  if (hasAt(message, 0, "input conversion failed")) {
    return {there, "The bytes are not valid in the encoding that the document declares."};
  }
  if (isOfLimit(message)) {
    return {there, std::string(message) + '.'};
  }
  const std::optional<XmlMistake> mistake = mistakeIn(text, stopped);
  const std::optional<XmlMistake> character = wrongCharacter(text);
  if (character && (!mistake || character->span.begin < mistake->span.begin)) {
    return *character;
  }
  return mistake.value_or(XmlMistake{
      there, text.find("<!DOCTYPE") == std::string_view::npos
                 ? "The document is not well-formed XML."
                 : "The document type, or an entity that it declares, is not well-formed."});
}

}  // namespace orvane::nimbrel::check
