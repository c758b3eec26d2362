#include "util/xml/XmlInput.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "util/ParseException.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::util::internal {
namespace {

using Form = XmlEncoding::Form;

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
  const XmlEncoding* named = nullptr;
  if (encoding != nullptr && *encoding != '\0') {
    named = findEncoding(encoding);
    if (named == nullptr) {
      throw ParseException(std::string("Unknown encoding: ") + encoding, 0, 0);
    }
  }
  left_ = {begin, bytes.read(begin, PIECE)};
  isAll_ = left_.size() < PIECE;
  const XmlEncoding* const known =
      named != nullptr ? withByteOrder(named, left_) : encodingShownBy(left_);
  if (known != nullptr && known->form != Form::UTF_8) {
    decode(known->name, std::string(left_));
  }
  readDeclaration(known != nullptr);
  markAsUtf8();
}

/// Replaces the first piece by the first bytes of what it means.
void XmlInput::decode(const char* encoding, std::string_view first) {
  decoder_ = std::make_unique<XmlDecoder>(encoding, first, bytes_);
  char* const begin = first_.data() + MARK_SIZE;
  left_ = {begin, decoder_->read(begin, PIECE)};
  isAll_ = left_.size() < PIECE && decoder_->fault().empty() && !decoder_->isCut();
}

void XmlInput::readDeclaration(bool isKnown) {
  const XmlDeclaration declaration = declarationOf(left_);
  if (declaration.isIncomplete && left_.size() == PIECE) {
    throw ParseException("The declaration is too long", 1, 1);
  }
  if (declaration.encoding.empty()) {
    return;
  }
  const XmlEncoding* const declared = findEncoding(declaration.encoding);
  if (declared == nullptr) {
    reject("Unsupported encoding " + std::string(declaration.encoding), left_, declaration);
  }
  if (isKnown || declared->form == Form::UTF_8) {
    return;
  }
  if (declared->form == Form::WIDE) {
    reject("Document labelled " + std::string(declaration.encoding) + " but has UTF-8 content",
           left_, declaration);
  }
  decode(declared->name, std::string(left_));
}

/// libxml2 would still take some beginnings for those of another encoding.
void XmlInput::markAsUtf8() {
  const std::string_view beginning = left_.substr(0, 4);
  if (beginning.find('\0') != std::string_view::npos ||
      beginning.find_first_of("\xFE\xFF\x4C") == 0) {
    char* const begin = std::copy(MARK.begin(), MARK.end(), first_.data()) - MARK.size();
    left_ = {begin, MARK.size() + left_.size()};
  }
}

void XmlInput::connect(XmlReading& reading) {
  reading_ = &reading;
  if (isAll_ && left_.find('\0') == std::string_view::npos) {
    first_[static_cast<std::size_t>(left_.data() - first_.data()) + left_.size()] = '\0';
    libxml::setInput(reading.context(), left_.data(), left_.size());
  } else {
    libxml::setInput(reading.context(), read, this);
  }
}

int XmlInput::read(void* self, char* target, int size) noexcept {
  auto& input = *static_cast<XmlInput*>(self);
  try {
    return static_cast<int>(input.next(target, static_cast<std::size_t>(std::max(size, 0))));
  } catch (...) {
    input.reading_->fail(std::current_exception());
    return 0;
  }
}

std::size_t XmlInput::next(char* target, std::size_t size) {
  if (!reading_->wantsMore(tag_.attributes(), tag_.namespaces(), choices_)) {
    return 0;
  }
  const std::size_t count = pull(target, size);
  if (count == 0 && decoder_ != nullptr) {
    if (decoder_->isCut()) {
      reading_->noteCut();
    } else if (!decoder_->fault().empty()) {
      reading_->reject(decoder_->fault().c_str(), decoder_->position());
    }
  }
  reading_->noteInputSize(bytes_.total());
  const std::string_view piece(target, count);
  tag_.scan(piece);
  if (reading_->isBeforeRoot()) {
    choices_ += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '|'));
  }
  return count;
}

std::size_t XmlInput::pull(char* target, std::size_t size) {
  if (left_.empty()) {
    return decoder_ == nullptr ? bytes_.read(target, size) : decoder_->read(target, size);
  }
  const std::string_view piece = left_.substr(0, size);
  std::copy(piece.begin(), piece.end(), target);
  left_.remove_prefix(piece.size());
  return piece.size();
}

}  // namespace orvane::nimbrel::util::internal
