#include "util/xml/XmlEncoding.h"

#include <algorithm>
#include <string>

#include "util/Ascii.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::util::internal {
namespace {

using namespace std::string_view_literals;
constexpr const char* UTF_8 = "UTF-8";

// In names of encodings only letters, whatever their case, and digits count.
constexpr const char* NAMES[] = {
    UTF_8,          "UTF-16",       "UTF-16LE",     "UTF-16BE",     "UTF-32",       "UTF-32LE",
    "UTF-32BE",     "US-ASCII",     "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
    "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",
    "ISO-8859-13",  "ISO-8859-14",  "ISO-8859-15",  "windows-1250", "windows-1251", "windows-1252",
    "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257", "windows-1258",
    "windows-874",  "TIS-620",      "KOI8-R",       "KOI8-U",       "Shift_JIS",    "EUC-JP",
    "EUC-KR",       "GB2312",       "GBK",          "GB18030",      "Big5"};
constexpr struct {
  const char* alias;
  const char* name;
} ALIASES[] = {{"UCS-2", "UTF-16"},       {"ISO-10646-UCS-2", "UTF-16"},
               {"UCS-4", "UTF-32"},       {"ISO-10646-UCS-4", "UTF-32"},
               {"ASCII", "US-ASCII"},     {"ISO-Latin-1", "ISO-8859-1"},
               {"Latin-1", "ISO-8859-1"}, {"CP1252", "windows-1252"}};

/// How a document begins.
constexpr struct {
  std::string_view bytes;
  const char* encoding;
} BEGINNINGS[] = {
    {"\xEF\xBB\xBF"sv, UTF_8},  {"\xFF\xFE\0\0"sv, "UTF-32LE"}, {"\xFF\xFE"sv, "UTF-16LE"},
    {"\xFE\xFF"sv, "UTF-16BE"}, {"\0\0\xFE\xFF"sv, "UTF-32BE"}, {"\0\0\0<"sv, "UTF-32BE"},
    {"<\0\0\0"sv, "UTF-32LE"},  {"<\0?\0"sv, "UTF-16LE"},       {"\0<\0?"sv, "UTF-16BE"},
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

bool isUtf8(std::string_view encoding) noexcept {
  return encoding == UTF_8;
}

const char* findEncoding(std::string_view name) noexcept {
  if (isUtf8(name)) {
    return UTF_8;
  }
  if (!isNameOfEncoding(name)) {
    return nullptr;
  }
  for (const char* known : NAMES) {
    if (isSameName(name, known)) {
      return known;
    }
  }
  for (const auto& other : ALIASES) {
    if (isSameName(name, other.alias)) {
      return other.name;
    }
  }
  return nullptr;
}

bool isWide(std::string_view encoding) noexcept {
  return encoding.substr(0, 4) == "UTF-" && !isUtf8(encoding);
}

const char* encodingShownBy(std::string_view document) {
  if (document.substr(0, 4) == "\x4C\x6F\xA7\x94") {  // "<?xm"
    throw ParseException("Unsupported encoding EBCDIC", 1, 1);
  }
  for (const auto& beginning : BEGINNINGS) {
    if (document.substr(0, beginning.bytes.size()) == beginning.bytes) {
      return beginning.encoding;
    }
  }
  return nullptr;
}

const char* withByteOrder(const char* encoding, std::string_view document) noexcept {
  const bool isBigEndian = document.substr(0, 1) == "\0"sv || document.substr(0, 1) == "\xFE";
  if (encoding == "UTF-16"sv) {
    return isBigEndian ? "UTF-16BE" : "UTF-16LE";
  }
  if (encoding == "UTF-32"sv) {
    return isBigEndian ? "UTF-32BE" : "UTF-32LE";
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
