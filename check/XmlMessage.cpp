#include "check/XmlMessage.h"

#include <cstddef>
#include <vector>

namespace orvane::nimbrel::check {
namespace {

// "%" stands for any text, in the sentence for the texts in their order; at the end of a message
// for none, too.
constexpr struct {
  std::string_view message;
  std::string_view sentence;
} MESSAGES[] = {
    {"xmlParseEntityRef: no name%", "Write \"&amp;\" for \"&\"."},
    {"EntityRef: expecting ';'%", "Write \"&amp;\" for \"&\", or end the reference with \";\"."},
    {"Entity '%' not defined%",
     "Unknown entity \"&%;\"; only amp, lt, gt, quot and apos are known without a document type."},
    {"Input is not proper UTF-8%",
     "The bytes are not UTF-8; save the document as UTF-8, or declare its encoding in the first "
     "line."},
    {"input conversion failed due to input error%",
     "The bytes are not valid in the encoding that the document declares."},
    {"Document labelled % but has % content",
     "The document declares %, but is %; correct what it declares."},
    {"String not started expecting ' or \"", "Put the text in quotes."},
    {"Unsupported encoding %", "Unknown encoding \"%\"; save the document as UTF-8."},
    {"AttValue: \" or ' expected", "Put the value of the attribute in quotes."},
    {"AttValue: ' expected", "The value of the attribute has no end; write the closing quote."},
    {"Specification mandates value for attribute %",
     "The attribute \"%\" has no value; write =\"...\"."},
    {"attributes construct error", "Separate attributes by blanks, and end the tag with \">\"."},
    {"Attribute % redefined", "The attribute \"%\" stands twice."},
    {"Unescaped '<' not allowed in attributes values", "Write \"&lt;\" for \"<\" in a value."},
    {"Opening and ending tag mismatch: % line % and %", "<%> in line % is closed by </%>."},
    {"Premature end of data in tag % line %", "<%> in line % is not closed."},
    {"Couldn't find end of Start Tag % line %", "The tag <%> in line % has no end; write \">\"."},
    {"Extra content at the end of the document", "Nothing may follow the root element."},
    {"Start tag expected, '<' not found", "The document must begin with an element."},
    {"StartTag: invalid element name",
     "Not the name of an element; write \"&lt;\" where \"<\" begins no tag."},
    {"XML declaration allowed only at the start of the document",
     "The XML declaration must stand at the very beginning, without even a blank before it."},
    {"Malformed declaration expecting version", "The XML declaration needs version=\"1.0\"."},
    {"Comment not terminated%", "The comment has no end; write \"-->\"."},
    {"Double hyphen within comment%", "A comment must not contain \"--\"."},
    {"CData section not finished%", "The CDATA section has no end; write \"]]>\"."},
    {"Sequence ']]>' not allowed in content", "Write \"]]&gt;\" for \"]]>\"."},
    {"PCDATA invalid Char value %", "Remove the control character with the number %."},
    {"xmlParseCharRef: invalid xmlChar value %", "XML has no character with the number %."},
    {"expected '>'", "End the tag with \">\"."},
};

/// The texts that "%" stands for, or nothing when the message is another one.
bool match(std::string_view pattern, std::string_view message,
           std::vector<std::string_view>& texts) {
  texts.clear();
  while (true) {
    const std::size_t literal = pattern.find('%');
    if (message.substr(0, literal) != pattern.substr(0, literal)) {
      return false;
    }
    if (literal == std::string_view::npos) {
      return true;
    }
    message.remove_prefix(literal);
    pattern.remove_prefix(literal + 1);
    const std::string_view next = pattern.substr(0, pattern.find('%'));
    const std::size_t end = next.empty() ? message.size() : message.find(next);
    if (end == std::string_view::npos) {
      return false;
    }
    texts.push_back(message.substr(0, end));
    message.remove_prefix(end);
  }
}

}  // namespace

std::string explainXml(std::string_view message) {
  std::vector<std::string_view> texts;
  for (const auto& row : MESSAGES) {
    if (!match(row.message, message, texts)) {
      continue;
    }
    std::string sentence;
    std::size_t used = 0;
    for (const char c : row.sentence) {
      if (c == '%' && used < texts.size()) {
        sentence += texts[used++];
      } else {
        sentence += c;
      }
    }
    return sentence;
  }
  return std::string(message);
}

}  // namespace orvane::nimbrel::check
