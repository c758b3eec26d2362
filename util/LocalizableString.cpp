#include "util/LocalizableString.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "util/Ascii.h"
#include "util/SharedInstance.h"
#include "util/UnicodeUtilICU.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::util {
namespace {

using Runs = std::vector<LocalizableString::TextNode>;

/// Makes room for more runs. Grows in steps of a factor: `reserve` alone allocates exactly what is
/// asked for, which makes appending run by run quadratic.
void makeRoom(Runs& runs, std::size_t more) {
  if (runs.capacity() - runs.size() < more) {
    runs.reserve(std::max(runs.size() + more, 2 * runs.capacity()));
  }
}

std::string flattenedTextOf(const Runs& runs) {
  std::size_t size = 0;
  for (const LocalizableString::TextNode& run : runs) {
    size += run.text.size();
  }
  std::string text;
  text.reserve(size);
  for (const LocalizableString::TextNode& run : runs) {
    text += run.text;
  }
  return text;
}

/// Whether the character at byte `at` is white space; `at` moves behind it.
bool readsWhite(const UnicodeUtil& unicodeUtil, std::string_view text, std::size_t& at) {
  if (static_cast<unsigned char>(text[at]) < 0x80) {
    return ascii::isSpace(text[at++]);
  }
  const char32_t codePoint = internal::decodeUtf8(text, at);
  return codePoint != internal::NOT_UTF8 && unicodeUtil.isWhiteSpace(codePoint);
}

/// Where the white space in front ends.
std::size_t contentBegin(const UnicodeUtil& unicodeUtil, std::string_view text) {
  std::size_t begin = 0;
  for (std::size_t at = 0; at < text.size() && readsWhite(unicodeUtil, text, at);) {
    begin = at;
  }
  return begin;
}

/// Where the white space behind begins.
std::size_t contentEnd(const UnicodeUtil& unicodeUtil, std::string_view text) {
  std::size_t end = text.size();
  while (end > 0) {
    std::size_t begin = end - 1;
    while (begin > 0 && end - begin < internal::MAX_UTF8_LENGTH &&
           internal::isUtf8Trail(text[begin])) {
      --begin;
    }
    std::size_t at = begin;
    if (!readsWhite(unicodeUtil, text, at) || at != end) {
      break;
    }
    end = begin;
  }
  return end;
}

/// A run's text with its white space normalised, or nothing when it is so already. `afterWhite`
/// tells whether the text before ended in white space, and then whether this one does.
Option<std::string> normalized(const UnicodeUtil& unicodeUtil, std::string_view text,
                               bool& afterWhite) {
  std::string result;
  std::size_t copied = 0;  // what lies before is in the result; 0 while nothing had to change
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    const bool white = readsWhite(unicodeUtil, text, at);
    if (white && (afterWhite || text[begin] != ' ')) {
      if (copied == 0) {
        result.reserve(text.size());
      }
      result.append(text, copied, begin - copied);
      if (!afterWhite) {
        result.push_back(' ');
      }
      copied = at;
    }
    afterWhite = white;
  }
  Option<std::string> changed;
  if (copied != 0) {
    changed = std::move(result.append(text, copied));
  }
  return changed;
}

}  // namespace

LocalizableString::LocalizableString()
    : LocalizableString(internal::sharedInstance<UnicodeUtilICU>(), LTR, std::string()) {}

LocalizableString::LocalizableString(std::shared_ptr<UnicodeUtil> unicodeUtil,
                                     const Direction& direction, const std::string& languageTag)
    : unicodeUtil_(std::move(unicodeUtil)), direction_(direction), languageTag_(languageTag) {
  if (unicodeUtil_ == nullptr) {
    throw std::invalid_argument("unicodeUtil cannot be NULL");
  }
}

LocalizableString::LocalizableString(const LocalizableString&) = default;

// The service is copied: a source without one would be no usable text.
LocalizableString::LocalizableString(LocalizableString&& other) noexcept
    : unicodeUtil_(other.unicodeUtil_),  // NOLINT(performance-move-constructor-init)
      direction_(other.direction_),
      languageTag_(std::move(other.languageTag_)),
      textNodes_(std::move(other.textNodes_)),
      flattened_(std::move(other.flattened_)) {
  other.languageTag_.clear();
}

LocalizableString& LocalizableString::operator=(const LocalizableString& other) {
  if (this != &other) {
    *this = LocalizableString(other);
  }
  return *this;
}

LocalizableString& LocalizableString::operator=(LocalizableString&& other) noexcept {
  if (this != &other) {
    unicodeUtil_ = other.unicodeUtil_;
    direction_ = other.direction_;
    languageTag_ = std::move(other.languageTag_);
    textNodes_ = std::move(other.textNodes_);
    other.textNodes_.clear();
    flattened_ = std::move(other.flattened_);
  }
  return *this;
}

LocalizableString::~LocalizableString() = default;

void LocalizableString::append(const std::string& text) {
  append(text, direction_, languageTag_);
}

void LocalizableString::append(const std::string& text, const Direction& direction,
                               const std::string& languageTag) {
  if (!text.empty()) {
    appendRun({text, direction, languageTag});
  }
}

void LocalizableString::append(std::string&& text, const Direction& direction,
                               const std::string& languageTag) {
  if (!text.empty()) {
    appendRun({std::move(text), direction, languageTag});
  }
}

void LocalizableString::append(const LocalizableString& other) {
  append(Runs(other.textNodes_));
}

void LocalizableString::append(std::vector<TextNode>&& runs) {
  runs.erase(std::remove_if(runs.begin(), runs.end(),
                            [](const TextNode& run) { return run.text.empty(); }),
             runs.end());
  if (textNodes_.empty()) {
    replaceRuns(std::move(runs));
    return;
  }
  makeRoom(textNodes_, runs.size());
  flattened_.get() += flattenedTextOf(runs);
  textNodes_.insert(textNodes_.end(), std::make_move_iterator(runs.begin()),
                    std::make_move_iterator(runs.end()));
}

void LocalizableString::setDirection(const Direction& direction) noexcept {
  direction_ = direction;
}

void LocalizableString::setLanguageTag(const std::string& languageTag) {
  languageTag_ = languageTag;
}

void LocalizableString::normalizeWhitespace() {
  Runs runs;
  bool changed = false;
  bool afterWhite = false;
  for (std::size_t i = 0; i < textNodes_.size(); ++i) {
    const TextNode& run = textNodes_[i];
    Option<std::string> text = normalized(*unicodeUtil_, run.text, afterWhite);
    if (text && !changed) {
      changed = true;
      runs.reserve(textNodes_.size());
      runs.assign(textNodes_.begin(), textNodes_.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (!changed) {
      continue;
    }
    if (!text) {
      runs.push_back(run);
    } else if (!text.get().empty()) {
      runs.push_back({std::move(text.get()), run.direction, run.languageTag});
    }
  }
  if (changed) {
    replaceRuns(std::move(runs));
  }
}

void LocalizableString::trim() {
  // All is decided before anything is touched: what changes the text below cannot fail.
  std::size_t first = 0;
  std::size_t begin = 0;  // in the first run that is kept
  std::size_t cutInFront = 0;
  for (; first < textNodes_.size(); ++first) {
    const std::string& text = textNodes_[first].text;
    begin = contentBegin(*unicodeUtil_, text);
    cutInFront += begin;
    if (begin < text.size()) {
      break;
    }
  }
  if (first == textNodes_.size()) {
    textNodes_.clear();
    flattened_.reset();
    return;
  }
  std::size_t last = textNodes_.size();
  std::size_t end = 0;  // in the last run that is kept
  std::size_t cutBehind = 0;
  while (end == 0) {
    const std::string& text = textNodes_[--last].text;
    end = contentEnd(*unicodeUtil_, text);
    cutBehind += text.size() - end;
  }
  textNodes_[last].text.resize(end);
  textNodes_[first].text.erase(0, begin);
  textNodes_.erase(textNodes_.begin() + static_cast<std::ptrdiff_t>(last) + 1, textNodes_.end());
  textNodes_.erase(textNodes_.begin(), textNodes_.begin() + static_cast<std::ptrdiff_t>(first));
  std::string& text = flattened_.get();
  text.resize(text.size() - cutBehind);
  text.erase(0, cutInFront);
}

bool LocalizableString::empty() const noexcept {
  return textNodes_.empty();
}

const char* LocalizableString::c_str() const noexcept {
  return flattened_ ? flattened_.c_str() : "";
}

LocalizableString::Direction LocalizableString::getDirection() const noexcept {
  return direction_;
}

const std::string& LocalizableString::getLanguageTag() const noexcept {
  return languageTag_;
}

const std::vector<LocalizableString::TextNode>& LocalizableString::getTextNodes() const noexcept {
  return textNodes_;
}

void LocalizableString::appendRun(TextNode run) {
  makeRoom(textNodes_, 1);
  if (!flattened_) {
    flattened_.emplace();
  }
  flattened_.get() += run.text;
  textNodes_.push_back(std::move(run));
}

void LocalizableString::replaceRuns(std::vector<TextNode> runs) {
  flattened_ = flattenedTextOf(runs);
  textNodes_ = std::move(runs);
}

}  // namespace orvane::nimbrel::util
