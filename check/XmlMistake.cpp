#include "check/XmlMistake.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "check/Markup.h"
#include "check/Suggestions.h"
#include "util/Utf8.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::check {
namespace {

constexpr std::size_t NOWHERE = std::string_view::npos;
constexpr std::string_view DIGITS = "0123456789";

/// Reads a document up to the first mistake, which it throws. What reads something begins at `at_`
/// and goes behind it.
class Scanner {
 public:
  Scanner(std::string_view text, std::size_t stopped) noexcept : text_(text), stopped_(stopped) {}

  void readDocument() {
    if (has("<?xml") && (skipSpace(text_, 5) > 5 || hasAt(text_, 5, "?>"))) {
      readDeclaration();
    }
    while (at_ < text_.size()) {
      readNext(tokenAt(text_, at_));
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
  void readNext(const Token& token) {
    switch (token.kind) {
      case Token::TEXT:
        return readText(token.span.end);
      case Token::COMMENT:
        return readComment(token);
      case Token::CDATA:
        return open_.empty() ? failOutside({at_, at_ + 9})
                             : skip(token, 9, "The CDATA section", "]]>");
      case Token::INSTRUCTION:
        return readInstruction(token);
      case Token::END_TAG:
        return readEndTag();
      case Token::DOCTYPE:
        return has("<!DOCTYPE") ? readDoctype(token) : failAtBracket();
      default:
        return endOfName(at_ + 1) > at_ + 1 ? readStartTag(token) : failAtBracket();
    }
  }

  void readDeclaration() {
    constexpr std::string_view PARTS[] = {"version", "encoding", "standalone"};
    const Span first = {skipSpace(text_, 5), endOfName(skipSpace(text_, 5))};
    if (in(first) != PARTS[0] && (!first.isEmpty() || hasAt(text_, first.begin, "?>"))) {
      fail(first.isEmpty() ? Span{0, 5} : first,
           "version=\"1.0\" must come first in the XML declaration.");
    }
    const auto* next = std::begin(PARTS);
    for (at_ = first.begin; !has("?>"); at_ = skipSpace(text_, at_)) {
      const Span name = {at_, endOfName(at_)};
      if (name.isEmpty()) {
        fail({0, 5}, "The XML declaration has no end; write \"?>\".");
      }
      const auto* const part = std::find(next, std::end(PARTS), in(name));
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
    at_ += 2;
  }

  void readText(std::size_t end) {
    at_ = skipSpace(text_, at_);
    if (open_.empty() && at_ < end) {
      failOutside({at_, std::min(end, text_.find_first_of(XML_SPACE, at_))});
    }
    const std::size_t wrong = text_.substr(0, end).find("]]>", at_);
    readReferences(std::min(wrong, end));
    if (wrong < end) {
      fail({wrong, wrong + 3}, "Write \"]]&gt;\" for \"]]>\".");
    }
  }

  void readReferences(std::size_t end) {
    while ((at_ = std::min(end, text_.substr(0, end).find('&', at_))) < end) {
      const bool isNumber = has("&#");
      const bool isHex = has("&#x");
      const std::size_t begin = at_ + (isHex ? 3 : isNumber ? 2 : 1);
      const std::size_t digits =
          text_.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : DIGITS, begin);
      const Span name = {begin, isNumber ? std::min(digits, text_.size()) : endOfName(begin)};
      const Span reference = {std::exchange(at_, name.end + 1), name.end + 1};
      if (name.isEmpty() || !hasAt(text_, name.end, ";")) {
        fail({reference.begin, name.end},
             isNumber         ? "Write a number and \";\" behind \"&#\", such as \"&#233;\"."
             : name.isEmpty() ? "Write \"&amp;\" for \"&\"."
                              : "Write \"&amp;\" for \"&\", or end the reference with \";\".");
      }
      std::uint32_t number = 0;  // and stays so for one that is too large
      std::from_chars(text_.data() + name.begin, text_.data() + name.end, number, isHex ? 16 : 10);
      if (isNumber && !isXmlCharacter(number)) {
        fail(reference,
             "XML has no character with the number " + in({reference.begin + 2, name.end}) + '.');
      }
      if (!isNumber && entities_.count(in(name)) == 0) {
        fail(reference, "Unknown entity \"&" + in(name) +
                            ";\"; XML itself has amp, lt, gt, quot and apos alone.");
      }
    }
  }

  /// Goes behind a token that ends in `end`; `size` is that of its beginning.
  void skip(const Token& token, std::size_t size, const std::string& what, std::string_view end) {
    if (!token.hasEnd) {
      fail({at_, at_ + size}, what + " has no end; write \"" + std::string(end) + "\".");
    }
    at_ = token.span.end;
  }

  void readComment(Token token) {
    const std::size_t hyphens = text_.find("--", at_ + 4);
    // Where the next comment begins this one has no end.
    const bool isNext = hasAt(text_, hyphens - 2, "<!");
    if (token.hasEnd && hyphens + 3 < token.span.end && !isNext) {
      fail({hyphens, hyphens + 2}, "A comment must not contain \"--\".");
    }
    token.hasEnd = token.hasEnd && hyphens + 3 == token.span.end;
    skip(token, 4, "The comment", "-->");
  }

  void readDoctype(const Token& token) {
    const std::size_t end = token.span.end;
    if (hasRoot_ || std::exchange(hasDoctype_, true)) {
      fail({at_, at_ + 9}, "A document type stands once, before the root element.");
    }
    if (stopped_ < end && token.hasEnd) {
      fail({stopped_, stopped_ + 1}, "A mistake in the document type; a widget needs none.");
    }
    skip(token, 9, "The document type", ">");
    for (at_ = token.span.begin; (at_ = text_.find("<!ENTITY", at_)) < end;) {
      at_ = skipSpace(text_, at_ + 8);
      entities_.insert(in({at_, endOfName(at_)}));
    }
    at_ = end;
  }

  void readInstruction(const Token& token) {
    const Span begin = {at_, endOfName(at_ + 2)};
    const std::string name = in(begin);
    if (looksLike(name, "<?xml")) {
      fail(begin, name == "<?xml" ? "The XML declaration must stand at the very beginning, without "
                                    "even a blank before it."
                                  : "Write \"<?xml\" in lower case.");
    }
    if (name == "<?" ||
        (!hasAt(text_, begin.end, "?>") && skipSpace(text_, begin.end) == begin.end)) {
      fail(begin, "A name and a blank must follow \"<?\".");
    }
    skip(token, name.size(), '"' + name + '"', "?>");
  }

  void readEndTag() {
    const Span name = {at_ + 2, endOfName(at_ + 2)};
    const Span tag = {std::exchange(at_, skipSpace(text_, name.end)), name.end};
    if (open_.empty()) {
      failOutside(tag);
    }
    const std::string start = '<' + in(open_.back()) + '>';
    const std::string end = "</" + in(open_.back()) + '>';
    if (!name.isEmpty() && in(name) != in(open_.back())) {
      const char* const begin = text_.data() + open_.back().begin;
      const std::string line =
          " in line " + std::to_string(1 + std::count(text_.data(), begin, '\n'));
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

  void readStartTag(const Token& token) {
    const Span name = {at_ + 1, endOfName(at_ + 1)};
    const Span tag = {at_, name.end};
    if (open_.empty() && std::exchange(hasRoot_, true)) {
      failOutside(tag);
    }
    std::set<std::string_view> names;
    Span value;
    for (at_ = name.end;
         !hasAt(text_, skipSpace(text_, at_), ">") && !hasAt(text_, skipSpace(text_, at_), "/>");) {
      const std::size_t before = std::exchange(at_, skipSpace(text_, at_));
      const Span attribute = {at_, endOfName(at_)};
      if (at_ == text_.size() || has("<")) {
        fail(tag, "The tag <" + in(name) + "> has no end; write \">\".");
      }
      if (before == at_ && !value.isEmpty() && text_[value.end - 1] == '=') {
        failWithoutEnd(value);
      }
      if (attribute.isEmpty()) {
        std::size_t end = at_;
        util::internal::decodeUtf8(text_, end);
        fail({at_, end},
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
    if (token.kind == Token::START_TAG) {
      open_.push_back(name);
    }
    at_ = token.span.end;
  }

  /// A value in quotes behind "=" and a name.
  Span readQuoted(Span name) {
    const std::optional<Span> found = valueBehind(text_, name.end);
    if (!found) {
      const std::size_t equals = skipSpace(text_, name.end);
      const std::size_t begin = skipSpace(text_, equals + 1);
      const std::size_t end = std::min(text_.find_first_of(" \t\r\n<>", begin), text_.size());
      if (hasAt(text_, equals, "=") && begin < end) {
        fail({begin, end}, "Put the value in straight quotes: \"...\".");
      }
      fail(name, "\"" + in(name) + "\" has no value; write " + in(name) + "=\"...\".");
    }
    const Span value = *found;
    const std::size_t bracket = text_.substr(0, value.end).find('<', value.begin);
    // A value in which a tag ends has no end itself.
    if (bracket == NOWHERE ? value.end == text_.size()
                           : text_.substr(0, bracket).find('>', value.begin) != NOWHERE) {
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
    throw XmlMistake{{span.begin, std::min(span.end, text_.size())}, std::move(sentence)};
  }

  /// Whether this comes next.
  [[nodiscard]] bool has(std::string_view part) const noexcept { return hasAt(text_, at_, part); }

  /// The end of a name. Blanks and punctuation of other alphabets are meant for others.
  [[nodiscard]] std::size_t endOfName(std::size_t begin) const noexcept {
    std::size_t end = nameAt(text_, begin).end;
    for (const std::string_view other : {"\xC2", "\xE2\x80", "\xE2\x81"}) {
      end = std::min(end, text_.substr(0, end).find(other, begin));
    }
    return end;
  }

  [[nodiscard]] std::string in(Span span) const {
    return std::string(text_.substr(span.begin, span.end - span.begin));
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t stopped_;
  std::vector<Span> open_;  // names of elements
  std::set<std::string> entities_ = {"amp", "lt", "gt", "quot", "apos"};
  bool hasRoot_ = false;
  bool hasDoctype_ = false;
};

}  // namespace

std::optional<XmlMistake> mistakeIn(std::string_view text, std::size_t stopped) {
  try {
    Scanner(text, stopped).readDocument();
  } catch (XmlMistake& mistake) {
    return std::move(mistake);
  }
  return std::nullopt;
}

}  // namespace orvane::nimbrel::check
