#include "util/xml/XmlInput.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "util/ParseException.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::string_view MARK = "\xEF\xBB\xBF";

/// Rejects a document for what it declares.
[[noreturn]] void reject(const std::string& message, std::string_view document,
                         const XmlDeclaration& declaration) {
  const std::string_view before = document.substr(0, declaration.end);
  const std::size_t line = before.rfind('\n');
  const std::size_t mark = before.substr(0, MARK.size()) == MARK ? MARK.size() : 0;
  throw ParseException(
      message, static_cast<unsigned int>(1 + std::count(before.begin(), before.end(), '\n')),
      static_cast<unsigned int>(line == std::string_view::npos ? before.size() - mark + 1
                                                               : before.size() - line));
}

}  // namespace

XmlInput::XmlInput(XmlBytes& bytes, const char* encoding) : bytes_(bytes) {
  char* const begin = first_.data() + MARK_SIZE;
  const char* named = nullptr;
  if (encoding != nullptr && *encoding != '\0') {
    named = findEncoding(encoding);
    if (named == nullptr) {
      throw ParseException(std::string("Unknown encoding: ") + encoding, 0, 0);
    }
  }
  left_ = {begin, bytes.read(begin, PIECE)};
  isAll_ = left_.size() < PIECE;
  const char* const known = named != nullptr ? withByteOrder(named, left_) : encodingShownBy(left_);
  if (known != nullptr && !isUtf8(known)) {
    decode(known);
  }
  readDeclaration(known != nullptr);
  markAsUtf8();
}

/// Replaces the first piece by the first bytes of what it means.
void XmlInput::decode(const char* encoding) {
  decoder_ = std::make_unique<XmlDecoder>(encoding, left_, bytes_);
  char* const begin = first_.data() + MARK_SIZE;
  left_ = {begin, decoder_->read(begin, PIECE)};
  isAll_ = left_.size() < PIECE && decoder_->isSound();
}

void XmlInput::readDeclaration(bool isKnown) {
  const XmlDeclaration declaration = declarationOf(left_);
  if (declaration.isIncomplete && left_.size() == PIECE) {
    throw ParseException("The declaration is too long", 1, 1);
  }
  if (declaration.encoding.empty()) {
    return;
  }
  const char* const declared = findEncoding(declaration.encoding);
  if (declared == nullptr) {
    reject("Unsupported encoding " + std::string(declaration.encoding), left_, declaration);
  }
  if (isKnown || isUtf8(declared)) {
    return;
  }
  if (isWide(declared)) {
    reject("Document labelled " + std::string(declaration.encoding) + " but has UTF-8 content",
           left_, declaration);
  }
  decode(declared);
}

/// Puts a byte order mark before a beginning that libxml2 would take for another encoding's.
void XmlInput::markAsUtf8() {
  const std::string_view beginning = left_.substr(0, 4);
  if (beginning.find('\0') != std::string_view::npos ||
      beginning.find_first_of("\xFE\xFF\x4C") == 0) {
    char* const begin = std::copy(MARK.begin(), MARK.end(), first_.data()) - MARK.size();
    left_ = {begin, MARK.size() + left_.size()};
  }
}

std::string_view XmlInput::whole() noexcept {
  if (!isAll_ || left_.find('\0') != std::string_view::npos) {
    return {};
  }
  first_[static_cast<std::size_t>(left_.data() - first_.data()) + left_.size()] = '\0';
  return left_;
}

std::size_t XmlInput::read(char* target, std::size_t size) {
  if (left_.empty()) {
    return decoder_ == nullptr ? bytes_.read(target, size) : decoder_->read(target, size);
  }
  const std::size_t count = left_.copy(target, size);
  left_.remove_prefix(count);
  return count;
}

}  // namespace orvane::nimbrel::util::internal
