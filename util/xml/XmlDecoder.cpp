#include "util/xml/XmlDecoder.h"

#include <algorithm>
#include <new>

#include "util/ParseException.h"
#include "util/PercentEscape.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::util::internal {

XmlDecoder::Converter XmlDecoder::open(const char* encoding) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(encoding, &status));
  if (status == U_MEMORY_ALLOCATION_ERROR) {
    throw std::bad_alloc();
  }
  if (U_FAILURE(status)) {
    throw ParseException(std::string("Unsupported encoding ") + encoding, 0, 0);
  }
  return converter;
}

XmlDecoder::XmlDecoder(const char* encoding, std::string_view first, XmlBytes& bytes)
    : from_(open(encoding)),
      utf8_(open("UTF-8")),
      bytes_(bytes),
      next_(raw_.data()),
      end_(std::copy(first.begin(), first.end(), raw_.data())) {
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setToUCallBack(from_.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
}

void XmlDecoder::refill() {
  const std::size_t count = bytes_.read(raw_.data(), raw_.size());
  next_ = raw_.data();
  end_ = next_ + count;
  isLast_ = count < raw_.size();
}

std::size_t XmlDecoder::read(char* target, std::size_t size) {
  char* at = target;
  while (isSound()) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_convertEx(utf8_.get(), from_.get(), &at, target + size, &next_, end_, pivot_.data(),
                   &pivotSource_, &pivotTarget_, pivot_.data() + pivot_.size(), false,
                   static_cast<UBool>(isLast_), &status);
    if (status == U_MEMORY_ALLOCATION_ERROR) {
      throw std::bad_alloc();
    }
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      break;
    }
    if (status == U_TRUNCATED_CHAR_FOUND) {
      isCut_ = true;
      break;
    }
    if (U_FAILURE(status)) {
      noteFault(next_);
    } else if (isLast_) {
      break;
    } else {
      refill();
    }
  }
  if (!isSound()) {  // what came before has not been handed out yet
    const UChar* source = pivotSource_;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_fromUnicode(utf8_.get(), &at, target + size, &source, pivotTarget_, nullptr, false,
                     &status);
    pivotSource_ = pivot_.data() + (source - pivot_.data());
  }
  const auto count = static_cast<std::size_t>(at - target);
  advance({target, count});
  if (count == 0 && !fault_.empty()) {
    throw ParseException(fault_, position_.line, position_.column);
  }
  return count;
}

void XmlDecoder::advance(std::string_view text) noexcept {
  const bool isBeginning = position_.line == 1 && position_.column == 1;
  if (isBeginning && text.substr(0, 3) == "\xEF\xBB\xBF") {  // later, it is a character
    text.remove_prefix(3);
  }
  for (const char c : text) {
    if (c == '\n') {
      ++position_.line;
      position_.column = 1;
    } else {
      position_.column += isUtf8Trail(c) ? 0 : 1;
    }
  }
}

void XmlDecoder::noteFault(const char* behind) {
  std::array<char, 32> invalid;
  auto count = static_cast<std::int8_t>(invalid.size());
  UErrorCode ignored = U_ZERO_ERROR;
  ucnv_getInvalidChars(from_.get(), invalid.data(), &count, &ignored);
  std::string bytes(invalid.data(), static_cast<std::size_t>(std::max<int>(count, 0)));
  bytes.append(behind, end_);
  fault_ = "input conversion failed due to input error, bytes";
  for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 4); ++i) {
    fault_ += " 0";
    appendEscape(fault_, 'x', bytes[i]);
  }
}

}  // namespace orvane::nimbrel::util::internal
