#include "util/xml/XmlEncoding.h"

#include <algorithm>
#include <string>

#include "util/Ascii.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::util::internal {
namespace {

using namespace std::string_view_literals;
using Form = XmlEncoding::Form;

constexpr XmlEncoding UTF_8 = {"UTF-8", Form::UTF_8};
constexpr XmlEncoding UTF_16LE = {"UTF-16LE", Form::WIDE};
constexpr XmlEncoding UTF_16BE = {"UTF-16BE", Form::WIDE};
constexpr XmlEncoding UTF_32LE = {"UTF-32LE", Form::WIDE};
constexpr XmlEncoding UTF_32BE = {"UTF-32BE", Form::WIDE};
// Without an order of bytes.
constexpr XmlEncoding UTF_16 = {"UTF-16", Form::WIDE};
constexpr XmlEncoding UTF_32 = {"UTF-32", Form::WIDE};

/// An encoding by the names that documents use; only letters, whatever their case, and digits
/// count.
struct Name {
  const char* name;
  XmlEncoding encoding;
};
constexpr Name bytes(const char* name) {
  return {name, {name, Form::BYTES}};
}
constexpr Name NAMES[] = {
    {"UTF-8", UTF_8},
    {"UTF-16", UTF_16},
    {"UTF-16LE", UTF_16LE},
    {"UTF-16BE", UTF_16BE},
    {"UCS-2", UTF_16},
    {"ISO-10646-UCS-2", UTF_16},
    {"UTF-32", UTF_32},
    {"UTF-32LE", UTF_32LE},
    {"UTF-32BE", UTF_32BE},
    {"UCS-4", UTF_32},
    {"ISO-10646-UCS-4", UTF_32},
    bytes("US-ASCII"),
    {"ASCII", {"US-ASCII", Form::BYTES}},
    bytes("ISO-8859-1"),
    {"ISO-Latin-1", {"ISO-8859-1", Form::BYTES}},
    {"Latin-1", {"ISO-8859-1", Form::BYTES}},
    bytes("ISO-8859-2"),
    bytes("ISO-8859-3"),
    bytes("ISO-8859-4"),
    bytes("ISO-8859-5"),
    bytes("ISO-8859-6"),
    bytes("ISO-8859-7"),
    bytes("ISO-8859-8"),
    bytes("ISO-8859-9"),
    bytes("ISO-8859-10"),
    bytes("ISO-8859-13"),
    bytes("ISO-8859-14"),
    bytes("ISO-8859-15"),
    bytes("windows-1250"),
    bytes("windows-1251"),
    bytes("windows-1252"),
    {"CP1252", {"windows-1252", Form::BYTES}},
    bytes("windows-1253"),
    bytes("windows-1254"),
    bytes("windows-1255"),
    bytes("windows-1256"),
    bytes("windows-1257"),
    bytes("windows-1258"),
    bytes("windows-874"),
    bytes("TIS-620"),
    bytes("KOI8-R"),
    bytes("KOI8-U"),
    bytes("Shift_JIS"),
    bytes("EUC-JP"),
    bytes("EUC-KR"),
    bytes("GB2312"),
    bytes("GBK"),
    bytes("GB18030"),
    bytes("Big5"),
};

/// How a document begins.
struct Beginning {
  std::string_view bytes;
  XmlEncoding encoding;
};
constexpr Beginning BEGINNINGS[] = {
    {"\xEF\xBB\xBF"sv, UTF_8}, {"\xFF\xFE\0\0"sv, UTF_32LE}, {"\xFF\xFE"sv, UTF_16LE},
    {"\xFE\xFF"sv, UTF_16BE},  {"\0\0\xFE\xFF"sv, UTF_32BE}, {"\0\0\0<"sv, UTF_32BE},
    {"<\0\0\0"sv, UTF_32LE},   {"<\0?\0"sv, UTF_16LE},       {"\0<\0?"sv, UTF_16BE},
};

bool isNameOfEncoding(std::string_view name) noexcept {
  return !name.empty() && ascii::isLetter(name.front()) &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return ascii::isLetterOrDigit(c) || c == '.' || c == '_' || c == '-';
         });
}

bool isSameName(std::string_view found, std::string_view wanted) noexcept {
  const auto next = [](std::string_view& name) {
    while (!name.empty() && !ascii::isLetterOrDigit(name.front())) {
      name.remove_prefix(1);
    }
    const char c = name.empty() ? '\0' : ascii::lowerCase(name.front());
    name.remove_prefix(name.empty() ? 0 : 1);
    return c;
  };
  for (;;) {
    const char c = next(found);
    if (c != next(wanted)) {
      return false;
    }
    if (c == '\0') {
      return true;
    }
  }
}

/// Reads from the front of a text.
class Reader {
 public:
  explicit Reader(std::string_view text) noexcept : text_(text) {}

  [[nodiscard]] std::size_t position() const noexcept { return at_; }

  bool skip(std::string_view expected) noexcept {
    const bool found = text_.substr(at_, expected.size()) == expected;
    at_ += found ? expected.size() : 0;
    return found;
  }
  bool skipSpace() noexcept {
    const std::size_t before = at_;
    while (at_ < text_.size() && ascii::isXmlSpace(text_[at_])) {
      ++at_;
    }
    return at_ > before;
  }
  std::string_view name() noexcept {
    const std::size_t before = at_;
    while (at_ < text_.size() && ascii::isLetter(text_[at_])) {
      ++at_;
    }
    return text_.substr(before, at_ - before);
  }
  /// What stands between quotation marks; null data when it does not end.
  std::string_view quoted() noexcept {
    const char quote = at_ < text_.size() ? text_[at_] : '\0';
    const std::size_t end =
        quote == '"' || quote == '\'' ? text_.find(quote, at_ + 1) : std::string_view::npos;
    if (end == std::string_view::npos) {
      return {};
    }
    const std::size_t begin = at_ + 1;
    at_ = end + 1;
    return text_.substr(begin, end - begin);
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

const XmlEncoding* findEncoding(std::string_view name) noexcept {
  if (name == UTF_8.name) {
    return &UTF_8;
  }
  if (!isNameOfEncoding(name)) {
    return nullptr;
  }
  const auto* const found =
      std::find_if(std::begin(NAMES), std::end(NAMES),
                   [&](const Name& known) { return isSameName(name, known.name); });
  return found == std::end(NAMES) ? nullptr : &found->encoding;
}

const XmlEncoding* encodingShownBy(std::string_view document) {
  if (document.substr(0, 4) == "\x4C\x6F\xA7\x94") {  // "<?xm"
    throw ParseException("Unsupported encoding EBCDIC", 1, 1);
  }
  const auto* const found =
      std::find_if(std::begin(BEGINNINGS), std::end(BEGINNINGS), [&](const Beginning& beginning) {
        return document.substr(0, beginning.bytes.size()) == beginning.bytes;
      });
  return found == std::end(BEGINNINGS) ? nullptr : &found->encoding;
}

const XmlEncoding* withByteOrder(const XmlEncoding* encoding, std::string_view document) {
  const bool isBigEndian = document.substr(0, 1) == "\0"sv || document.substr(0, 1) == "\xFE";
  if (encoding->name == std::string_view(UTF_16.name)) {
    return isBigEndian ? &UTF_16BE : &UTF_16LE;
  }
  if (encoding->name == std::string_view(UTF_32.name)) {
    return isBigEndian ? &UTF_32BE : &UTF_32LE;
  }
  return encoding;
}

XmlDeclaration declarationOf(std::string_view document) noexcept {
  Reader reader(document);
  reader.skip("\xEF\xBB\xBF");
  if (!reader.skip("<?xml")) {
    return {};
  }
  while (reader.skipSpace()) {
    const std::string_view name = reader.name();
    reader.skipSpace();
    if (!reader.skip("=")) {
      break;
    }
    reader.skipSpace();
    const std::string_view value = reader.quoted();
    if (value.data() == nullptr) {
      break;
    }
    if (name == "encoding") {
      return isNameOfEncoding(value) ? XmlDeclaration{value, reader.position()} : XmlDeclaration{};
    }
  }
  return {{}, 0, document.find('>') == std::string_view::npos};
}

}  // namespace orvane::nimbrel::util::internal
