// The value parsers of the rules, each beside a plain account of what it is to do.

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "config/ConfigRules.h"
#include "config/NimbrelConfigParser.h"
#include "fuzz/Property.h"
#include "util/LocalizableString.h"
#include "util/StringUtil.h"
#include "util/UnicodeUtilICU.h"

namespace orvane::nimbrel::fuzz {
namespace {

using util::LocalizableString;
using zel::util::StringUtil;

constexpr const char* SPACE = " \t\n\v\f\r";

const auto unicodeUtil = std::make_shared<util::UnicodeUtilICU>();
const config::ConfigRules rules(unicodeUtil);

/// The number that a text stands for: -1 for none, -2 for one above 32 bits.
std::int64_t plainNumber(const std::string& text) {
  if (text.empty()) {
    return -1;
  }
  std::int64_t value = 0;
  for (const char c : text) {
    if (std::strchr(SPACE, c) != nullptr) {
      continue;
    }
    if (c < '0' || c > '9') {
      return value;
    }
    value = value * 10 + (c - '0');
    if (value > std::numeric_limits<std::uint32_t>::max()) {
      return -2;
    }
  }
  return std::strchr(SPACE, text.back()) != nullptr ? -1 : value;
}

std::int64_t readNumber(const std::string& text) {
  try {
    return rules.parseNonNegativeInteger(text.c_str());
  } catch (const std::invalid_argument&) {
    return -1;
  } catch (const std::overflow_error&) {
    return -2;
  }
}

void checkNumbers(const std::string& text) {
  const std::int64_t number = plainNumber(text);
  require(readNumber(text) == number, "a number is read as it should");
  util::Option<std::string> value;
  value = text;
  const util::Option<unsigned int> size = config::parseWidthOrHeight(rules, value);
  require(static_cast<bool>(size) == (number > 0), "a size is a number above 0");
  require(!size || size.get() == number, "a size is its number");
}

void checkWords(const std::string& text) {
  std::string squeezed = text;
  StringUtil::squeeze(squeezed);
  StringUtil::trim(squeezed);
  require(StringUtil::squeezeAndTrim(text) == squeezed, "two routes to one text agree");
  std::string joined;
  for (const std::string& keyword : rules.parseListOfKeywords(text.c_str())) {
    require(!keyword.empty() && keyword.find_first_of(SPACE) == std::string::npos,
            "a keyword has no white space");
    joined += (joined.empty() ? "" : " ") + keyword;
  }
  require(joined == squeezed, "no keyword is lost");

  bool isBoolean = true;
  try {
    require(rules.parseBoolean(text.c_str()) == (text == "true"), "a boolean is what it says");
  } catch (const std::invalid_argument&) {
    isBoolean = false;
  }
  require(isBoolean == (text == "true" || text == "false"), "nothing else is a boolean");
  require(rules.isValidTavloApplicationId(text.c_str()) ==
              (!text.empty() && text.size() <= 32 &&
               text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789") == std::string::npos),
          "a store id is 1 to 32 lower-case letters and digits");
}

LocalizableString emptyText() {
  return {unicodeUtil, LocalizableString::LTR, "en"};
}

/// Runs end at "|"; white space is that of the whole text all the same.
void checkRuns(std::string_view text) {
  LocalizableString parts = emptyText();
  LocalizableString whole = emptyText();
  std::string joined;
  while (!text.empty()) {
    const std::string run(takeUpTo('|', text));
    parts.append(run, LocalizableString::RTL, "he");
    joined += run;
  }
  whole.append(joined);
  require(joined == parts.c_str(), "runs make up their text");
  for (int step = 0; step < 3; ++step) {
    if (step != 1) {
      parts.trim();
      whole.trim();
    } else {
      parts.normalizeWhitespace();
      whole.normalizeWhitespace();
    }
    require(std::strcmp(parts.c_str(), whole.c_str()) == 0, "where runs end changes no text");
    std::string text_;
    for (const LocalizableString::TextNode& run : parts.getTextNodes()) {
      require(!run.text.empty(), "no run is empty");
      text_ += run.text;
    }
    require(text_ == parts.c_str(), "runs make up their text");
    require(parts.empty() == text_.empty(), "an empty text has no run");
  }
}

}  // namespace
}  // namespace orvane::nimbrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::nimbrel;
  const std::string text = fuzz::cString(fuzz::viewOf(data, size));
  fuzz::checkNumbers(text);
  fuzz::checkWords(text);
  // Broken UTF-8 that a run's end completes would be white space of the whole only.
  bool ascii = true;
  for (const char c : text) {
    ascii = ascii && static_cast<unsigned char>(c) < 0x80;
  }
  if (ascii || text.find('|') == std::string::npos) {
    fuzz::checkRuns(text);
  }
  return 0;
}
