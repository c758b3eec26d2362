#include "util/xml/XmlOutcome.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

namespace orvane::nimbrel::util::internal {
namespace {

std::string onOneLine(const char* message) {
  std::string text(message == nullptr ? "The document is not well-formed" : message);
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
    text.pop_back();
  }
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

void XmlOutcome::reject(const char* message, libxml::Position at) noexcept {
  if (isDecided_) {
    return;
  }
  isDecided_ = true;
  try {
    rejection_.emplace(onOneLine(message), at.line, at.column);
  } catch (...) {
    fail(std::current_exception());
  }
}

void XmlOutcome::fail(std::exception_ptr failure) noexcept {
  isDecided_ = true;
  if (failure_ == nullptr) {
    failure_ = std::move(failure);
  }
}

void XmlOutcome::rethrow() const {
  if (failure_ != nullptr) {
    std::rethrow_exception(failure_);
  }
  if (isOutOfMemory_) {
    throw std::bad_alloc();
  }
  if (rejection_) {
    throw ParseException(*rejection_);
  }
}

}  // namespace orvane::nimbrel::util::internal
