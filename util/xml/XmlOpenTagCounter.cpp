#include "util/xml/XmlOpenTagCounter.h"

#include <cstring>

#include "util/Ascii.h"

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::string_view NAMESPACE_DECLARATION = "xmlns";

bool isQuote(char c) noexcept {
  return c == '"' || c == '\'';
}

/// Ends a tag, or shows that it is none.
bool isNoName(char c) noexcept {
  return c == '>' || c == '/' || c == '=' || c == '!' || c == '?' || isQuote(c);
}

}  // namespace

void XmlOpenTagCounter::begin() noexcept {
  state_ = State::TAG_NAME;
  attributes_ = 0;
  namespaces_ = 0;
}

void XmlOpenTagCounter::scan(std::string_view piece) noexcept {
  const std::size_t tag = piece.rfind('<');
  if (tag != std::string_view::npos) {
    begin();
    piece.remove_prefix(tag + 1);
  }
  for (std::size_t i = 0; i < piece.size() && isOpen(); ++i) {
    if (state_ == State::VALUE) {
      const void* const end = std::memchr(piece.data() + i, quote_, piece.size() - i);
      if (end == nullptr) {
        return;
      }
      i = static_cast<std::size_t>(static_cast<const char*>(end) - piece.data());
      state_ = State::BETWEEN;
    } else {
      step(piece[i]);
    }
  }
}

void XmlOpenTagCounter::step(char c) noexcept {
  switch (state_) {
    case State::TAG_NAME:
      state_ = ascii::isXmlSpace(c) ? State::BETWEEN
               : isNoName(c)        ? State::NO_TAG
                                    : State::TAG_NAME;
      break;
    case State::BETWEEN:
      if (!ascii::isXmlSpace(c)) {
        nameSize_ = 0;
        isNamespace_ = true;
        stepInName(c);
      }
      break;
    case State::NAME:
      stepInName(c);
      break;
    case State::EQUALS:
      state_ = c == '='               ? State::BEFORE_VALUE
               : ascii::isXmlSpace(c) ? State::EQUALS
                                      : State::NO_TAG;
      break;
    case State::BEFORE_VALUE:
      if (isQuote(c)) {
        quote_ = c;
        ++(isNamespace_ ? namespaces_ : attributes_);
        state_ = State::VALUE;
      } else if (!ascii::isXmlSpace(c)) {
        state_ = State::NO_TAG;
      }
      break;
    case State::VALUE:
    case State::NO_TAG:
      break;
  }
}

void XmlOpenTagCounter::stepInName(char c) noexcept {
  const std::size_t size = nameSize_++;
  if (size > 0 && (ascii::isXmlSpace(c) || c == '=')) {
    isNamespace_ = isNamespace_ && size >= NAMESPACE_DECLARATION.size();
    state_ = c == '=' ? State::BEFORE_VALUE : State::EQUALS;
  } else if (isNoName(c)) {
    state_ = State::NO_TAG;
  } else {
    isNamespace_ = isNamespace_ && (size < NAMESPACE_DECLARATION.size()
                                        ? c == NAMESPACE_DECLARATION[size]
                                        : size > NAMESPACE_DECLARATION.size() || c == ':');
    state_ = State::NAME;
  }
}

}  // namespace orvane::nimbrel::util::internal
