#include "check/XmlMistake.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "check/NearestName.h"
#include "check/SourceMap.h"
#include "check/XmlCursor.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::check {
namespace {

/// Reads a document up to the first mistake, which it throws. What reads something begins at `at_`
/// and goes behind it.
class Scanner : XmlCursor {
 public:
  Scanner(std::string_view text, std::size_t stopped) noexcept
      : XmlCursor(text), stopped_(stopped) {}

  void readDocument() {
    if (has("<?xml") && (skipSpace(5) > 5 || has("?>", 5))) {
      readDeclaration();
    }
    while (at_ < text_.size()) {
      readNext();
    }
    if (!open_.empty()) {
      fail({open_.back().begin - 1, open_.back().end},
           "<" + in(open_.back()) + "> has no end tag; write </" + in(open_.back()) + ">.");
    }
    if (!hasRoot_) {
      failOutside({at_, at_});
    }
  }

 private:
  void readNext() {
    if (!has("<")) {
      return readText();
    }
    if (has("<!--")) {
      return readComment();
    }
    if (has("<![CDATA[")) {
      return open_.empty() ? failOutside({at_, at_ + 9}) : readTo("]]>", 9, "The CDATA section");
    }
    if (has("<!DOCTYPE")) {
      return readDoctype();
    }
    if (has("<?")) {
      return readInstruction();
    }
    if (has("</")) {
      return readEndTag();
    }
    return endOfName(at_ + 1) > at_ + 1 ? readStartTag() : failAtBracket();
  }

  void readDeclaration() {
    constexpr std::string_view PARTS[] = {"version", "encoding", "standalone"};
    const auto* next = std::begin(PARTS);
    for (at_ = skipSpace(5); !has("?>"); at_ = skipSpace(at_)) {
      const Span name = {at_, endOfName(at_)};
      if (name.isEmpty()) {
        fail({0, 5}, "The XML declaration has no end; write \"?>\".");
      }
      const auto* const part = std::find(next, std::end(PARTS), in(name));
      if (next == PARTS && part != next) {
        fail(name, "version=\"1.0\" must come first in the XML declaration.");
      }
      const Span value = part == std::end(PARTS) ? name : readQuoted(name);
      const std::string text = in(value);
      const bool isRight =
          part == PARTS ? text.substr(0, 2) == "1." && text.find_first_not_of(DIGITS, 2) == NOWHERE
          : part == PARTS + 1 ? !util::internal::declarationOf(text_).encoding.empty()
                              : text == "yes" || text == "no";
      if (!isRight || endOfName(at_) > at_) {
        fail({name.begin, std::max(at_, name.end)},
             "Write version=\"1.0\", encoding=\"...\" and standalone=\"yes\" or \"no\", in this "
             "order and with blanks between.");
      }
      next = part + 1;
    }
    if (next == PARTS) {
      fail({0, 5}, "The XML declaration needs version=\"1.0\".");
    }
    at_ += 2;
  }

  void readText() {
    const std::size_t end = orEnd(text_.find('<', at_));
    at_ = skipSpace(at_);
    if (open_.empty() && at_ < end) {
      failOutside({at_, std::min(end, text_.find_first_of(SPACE, at_))});
    }
    const std::size_t wrong = upTo(end).find("]]>", at_);
    readReferences(std::min(wrong, end));
    if (wrong < end) {
      fail({wrong, wrong + 3}, "Write \"]]&gt;\" for \"]]>\".");
    }
  }

  void readReferences(std::size_t end) {
    while ((at_ = std::min(end, upTo(end).find('&', at_))) < end) {
      readReference();
    }
  }

  void readReference() {
    const bool isNumber = has("&#");
    const bool isHex = has("&#x");
    const std::size_t begin = at_ + (isHex ? 3 : isNumber ? 2 : 1);
    const Span name = {begin, isNumber ? orEnd(text_.find_first_not_of(
                                             isHex ? "0123456789abcdefABCDEF" : DIGITS, begin))
                                       : endOfName(begin)};
    const Span reference = {std::exchange(at_, name.end + 1), name.end + 1};
    if (name.isEmpty() || !has(";", name.end)) {
      fail({reference.begin, name.end},
           isNumber         ? "Write a number and \";\" behind \"&#\", such as \"&#233;\"."
           : name.isEmpty() ? "Write \"&amp;\" for \"&\"."
                            : "Write \"&amp;\" for \"&\", or end the reference with \";\".");
    }
    std::uint32_t number = 0;
    const bool isTooLarge =
        std::from_chars(text_.data() + name.begin, text_.data() + name.end, number, isHex ? 16 : 10)
            .ec != std::errc();
    if (isNumber && (isTooLarge || !isXmlCharacter(number))) {
      fail(reference,
           "XML has no character with the number " + in({reference.begin + 2, name.end}) + '.');
    }
    if (!isNumber && entities_.count(in(name)) == 0) {
      fail(reference, "Unknown entity \"&" + in(name) +
                          ";\"; XML itself has amp, lt, gt, quot and apos alone.");
    }
  }

  void readTo(std::string_view end, std::size_t size, const std::string& what) {
    const std::size_t found = text_.find(end, at_ + size);
    if (found == NOWHERE) {
      fail({at_, at_ + size}, what + " has no end; write \"" + std::string(end) + "\".");
    }
    at_ = found + end.size();
  }

  void readComment() {
    const std::size_t hyphens = text_.find("--", at_ + 4);
    const std::size_t end = text_.find("-->", at_ + 4);
    // Where the next comment begins this one has no end.
    const bool isNext = hyphens < end && text_.substr(hyphens - 2, 2) == "<!";
    if (hyphens < end && end < text_.size() && !isNext) {
      fail({hyphens, hyphens + 2}, "A comment must not contain \"--\".");
    }
    if (isNext) {
      fail({at_, at_ + 4}, "The comment has no end; write \"-->\".");
    }
    readTo("-->", 4, "The comment");
  }

  void readDoctype() {
    const std::size_t end = behindDoctype(text_, at_ + 2);
    if (hasRoot_ || std::exchange(hasDoctype_, true)) {
      fail({at_, at_ + 9}, "A document type stands once, before the root element.");
    }
    if (text_[end - 1] != '>') {
      fail({at_, at_ + 9}, "The document type has no end; write \">\".");
    }
    if (stopped_ < end) {
      fail({stopped_, stopped_ + 1}, "A mistake in the document type; a widget needs none.");
    }
    constexpr std::string_view ENTITY = "<!ENTITY";
    for (at_ = text_.find(ENTITY, at_); at_ < end; at_ = text_.find(ENTITY, at_)) {
      at_ = skipSpace(at_ + ENTITY.size());
      entities_.insert(in({at_, endOfName(at_)}));
    }
    at_ = end;
  }

  void readInstruction() {
    const Span begin = {at_, endOfName(at_ + 2)};
    const std::string name = in(begin);
    if (looksLike(name, "<?xml")) {
      fail(begin, name == "<?xml" ? "The XML declaration must stand at the very beginning, without "
                                    "even a blank before it."
                                  : "Write \"<?xml\" in lower case.");
    }
    if (name == "<?" || (!has("?>", begin.end) && skipSpace(begin.end) == begin.end)) {
      fail(begin, "A name and a blank must follow \"<?\".");
    }
    readTo("?>", name.size(), '"' + name + '"');
  }

  void readEndTag() {
    const Span name = {at_ + 2, endOfName(at_ + 2)};
    const Span tag = {std::exchange(at_, skipSpace(name.end)), name.end};
    if (open_.empty()) {
      failOutside(tag);
    }
    const std::string start = '<' + in(open_.back()) + '>';
    const std::string end = "</" + in(open_.back()) + '>';
    if (!name.isEmpty() && in(name) != in(open_.back())) {
      const std::string_view before = text_.substr(0, open_.back().begin);
      const std::string line =
          " in line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n'));
      const bool isOpen = std::any_of(open_.begin(), open_.end(),
                                      [&](const Span& element) { return in(element) == in(name); });
      fail(tag, isOpen ? end + " is missing: " + start + " begins" + line + '.'
                       : start + line + " is closed by </" + in(name) + ">; write " + end + '.');
    }
    if (name.isEmpty() || !has(">")) {
      fail(tag, "Write " + end + "; an end tag has nothing but its name.");
    }
    ++at_;
    open_.pop_back();
  }

  void readStartTag() {
    const Span name = {at_ + 1, endOfName(at_ + 1)};
    const Span tag = {at_, name.end};
    if (open_.empty() && std::exchange(hasRoot_, true)) {
      failOutside(tag);
    }
    std::set<std::string_view> names;
    Span value;
    for (at_ = name.end; !has(">", skipSpace(at_)) && !has("/>", skipSpace(at_));) {
      const std::size_t before = std::exchange(at_, skipSpace(at_));
      const Span attribute = {at_, endOfName(at_)};
      if (at_ == text_.size() || has("<")) {
        fail(tag, "The tag <" + in(name) + "> has no end; write \">\".");
      }
      if (before == at_ && !value.isEmpty() && text_[value.end - 1] == '=') {
        failWithoutEnd(value);
      }
      if (attribute.isEmpty()) {
        fail({at_, behindCharacter(at_)},
             has("\"") || has("'")
                 ? "Remove this quotation mark, or write the one that is missing before it."
                 : "An attribute cannot begin with this character.");
      }
      if (before == at_) {
        fail(attribute, "Write a blank before \"" + in(attribute) + "\".");
      }
      if (!names.insert(text_.substr(at_, attribute.end - at_)).second) {
        fail(attribute, "The attribute \"" + in(attribute) + "\" stands twice.");
      }
      value = readQuoted(attribute);
      const std::size_t end = std::exchange(at_, value.begin);
      readReferences(value.end);
      at_ = end;
    }
    at_ = skipSpace(at_);
    if (has(">")) {
      open_.push_back(name);
    }
    at_ += has(">") ? 1 : 2;
  }

  /// A value in quotes behind "=" and a name.
  Span readQuoted(Span name) {
    const std::size_t equals = skipSpace(name.end);
    const std::size_t quote = skipSpace(equals + 1);
    if (!has("=", equals) || (!has("\"", quote) && !has("'", quote))) {
      const std::size_t end = orEnd(text_.find_first_of(" \t\r\n<>", quote));
      if (has("=", equals) && end > quote) {
        fail({quote, end}, "Put the value in straight quotes: \"...\".");
      }
      fail(name, "\"" + in(name) + "\" has no value; write " + in(name) + "=\"...\".");
    }
    const Span value = {quote + 1, orEnd(text_.find(text_[quote], quote + 1))};
    const std::size_t bracket = upTo(value.end).find('<', value.begin);
    // A value in which a tag ends has no end itself.
    if (bracket == NOWHERE ? value.end == text_.size()
                           : upTo(bracket).find('>', value.begin) != NOWHERE) {
      failWithoutEnd(value);
    }
    if (bracket != NOWHERE) {
      fail({bracket, bracket + 1}, "Write \"&lt;\" for \"<\" in a value.");
    }
    at_ = value.end + 1;
    return value;
  }

  [[noreturn]] void failAtBracket() {
    constexpr std::string_view ROWS[][2] = {
        {"<<<<<<<", "\"<<<<<<<\" is a conflict marker of version control; keep one version."},
        {"<\\", "End tags begin with \"</\"."},
        {"< /", "End tags begin with \"</\"."},
        {"<!-", "Comments begin with \"<!--\"."},
        {"<!", "Only \"<!--\", \"<![CDATA[\" and \"<!DOCTYPE\" begin with \"<!\"."},
        {"<", "Write \"&lt;\" for \"<\", or the name of a tag directly behind it."},
    };
    const auto* const row = std::find_if(std::begin(ROWS), std::end(ROWS),
                                         [&](const auto& known) { return has(known[0]); });
    fail({at_, at_ + (*row)[0].size()}, std::string((*row)[1]));
  }

  [[noreturn]] void failOutside(Span span) {
    fail(span, hasRoot_ ? "Nothing may follow the root element."
                        : "The document must begin with an element.");
  }

  [[noreturn]] void failWithoutEnd(Span value) {
    fail({value.begin - 1, value.begin}, "The value has no end; write the closing quote.");
  }

  [[noreturn]] void fail(Span span, std::string sentence) {
    throw XmlMistake{{span.begin, orEnd(span.end)}, std::move(sentence)};
  }

  std::size_t stopped_;
  std::vector<Span> open_;  // names of elements
  std::set<std::string> entities_ = {"amp", "lt", "gt", "quot", "apos"};
  bool hasRoot_ = false;
  bool hasDoctype_ = false;
};

}  // namespace

bool isXmlCharacter(char32_t c) noexcept {
  return c == '\t' || c == '\n' || c == '\r' ||
         (c >= 0x20 && (c & 0x1FF800U) != 0xD800 && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF);
}

std::optional<XmlMistake> mistakeIn(std::string_view text, std::size_t stopped) {
  try {
    Scanner(text, stopped).readDocument();
  } catch (XmlMistake& mistake) {
    return std::move(mistake);
  }
  return std::nullopt;
}

}  // namespace orvane::nimbrel::check
