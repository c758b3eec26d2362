#include "util/IRIParser.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "util/IRICharacters.h"
#include "util/IpAddress.h"
#include "util/PercentEscape.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::util {
namespace {

using namespace internal;

constexpr IRICharacters REG_NAME = IRI_UNRESERVED | IRI_SUB_DELIMS;
constexpr IRICharacters USER_INFO = REG_NAME | IRI_COLON;
constexpr IRICharacters PATH = REG_NAME | IRI_PATH;  // segments and the slashes between them
constexpr int MAX_PORT = 65535;

/// Walks over the text once, component by component. Where a component meets a character that it
/// must not hold, it ends; the text is rejected because nothing else may begin there.
class Scanner {
 public:
  explicit Scanner(std::string_view text) noexcept : text_(text) {}

  bool scan(IRI& iri) {
    if (!scanScheme(iri)) {
      return false;
    }
    if (text_.substr(at_, 2) == "//") {
      at_ += 2;
      if (!scanAuthority(iri)) {
        return false;
      }
    }
    iri.path = take(PATH);
    iri.hasPath = !iri.path.empty();
    if (iri.hasHost && iri.hasPath && iri.path[0] != '/') {
      return false;
    }
    if (skip('?')) {
      iri.query = takeQueryOrFragment(true);
      iri.hasQuery = true;
    }
    if (skip('#')) {
      iri.fragment = takeQueryOrFragment(false);
      iri.hasFragment = true;
    }
    return atEnd();
  }

 private:
  [[nodiscard]] bool atEnd() const noexcept { return at_ == text_.size(); }

  bool skip(char character) noexcept {
    if (atEnd() || text_[at_] != character) {
      return false;
    }
    ++at_;
    return true;
  }

  /// Moves over characters of the classes, percent escapes and what is allowed beyond ASCII.
  void move(IRICharacters classes, bool allowsPrivate = false) noexcept {
    while (!atEnd()) {
      const char byte = text_[at_];
      if (isIRICharacter(byte, classes)) {
        ++at_;
      } else if (static_cast<unsigned char>(byte) >= 0x80) {
        std::size_t next = at_;
        const char32_t codePoint = decodeUtf8(text_, next);
        if (!isUcsChar(codePoint) && !(allowsPrivate && isIPrivate(codePoint))) {
          return;
        }
        at_ = next;
      } else if (escapedByte(text_, at_) >= 0) {
        at_ += 3;
      } else {
        return;
      }
    }
  }

  std::string_view take(IRICharacters classes) noexcept {
    const std::size_t begin = at_;
    move(classes);
    return text_.substr(begin, at_ - begin);
  }

  std::string_view takeQueryOrFragment(bool allowsPrivate) noexcept {
    const std::size_t begin = at_;
    do {
      move(PATH, allowsPrivate);
    } while (skip('?'));
    return text_.substr(begin, at_ - begin);
  }

  bool scanScheme(IRI& iri) {
    if (atEnd() || !isIRICharacter(text_[0], IRI_ALPHA)) {
      return false;
    }
    while (!atEnd() && isIRICharacter(text_[at_], IRI_SCHEME)) {
      ++at_;
    }
    iri.scheme = text_.substr(0, at_);
    return skip(':');
  }

  bool scanAuthority(IRI& iri) {
    if (text_.find('@', at_) != std::string_view::npos) {
      const std::size_t begin = at_;
      const std::string_view userInfo = take(USER_INFO);
      iri.hasUserInfo = skip('@');
      if (iri.hasUserInfo) {
        iri.userInfo = userInfo;
      } else {
        at_ = begin;  // What may hold a port is no user information: it is read again as a host.
      }
    }
    iri.hasHost = true;
    if (atEnd() || text_[at_] != '[') {
      iri.host = take(REG_NAME);
    } else {
      const std::size_t length = text_.substr(at_).find(']') + 1;
      const std::string_view literal = text_.substr(at_, length);  // empty when unclosed
      if (!isIpLiteral(literal)) {
        return false;
      }
      iri.host = literal;
      at_ += length;
    }
    return !skip(':') || scanPort(iri);
  }

  bool scanPort(IRI& iri) noexcept {
    for (; !atEnd() && isIRICharacter(text_[at_], IRI_DIGIT); ++at_) {
      iri.port = (iri.port < 0 ? 0 : iri.port * 10) + (text_[at_] - '0');
      if (iri.port > MAX_PORT) {
        return false;
      }
    }
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

IRIParser::IRIParser() = default;
IRIParser::~IRIParser() = default;

bool IRIParser::tryParse(const char* text, Option<IRI>& out) const {
  if (text == nullptr) {
    return false;
  }
  IRI iri;
  if (!Scanner(text).scan(iri)) {
    return false;
  }
  out = std::move(iri);
  return true;
}

}  // namespace orvane::nimbrel::util
