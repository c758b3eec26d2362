#include "check/NearestName.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "util/Ascii.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

/// Longer texts are no misspelt name.
constexpr std::size_t LONGEST = 256;

/// Letters of other scripts that are taken for Latin ones, in lower case. Not the whole list of
/// Unicode's UTS #39: the library that has it takes an eighth of the tool's start.
constexpr std::pair<std::u32string_view, std::u32string_view> LOOK_ALIKES = {
    U"\u0430\u0432\u0435\u0451\u043A\u043C\u043D\u043E\u0440\u0441\u0442\u0443\u0445\u0455\u0456"
    U"\u0458\u0501\u051B\u051D\u04CF\u04BB\u0261\u0131\u03B1\u03B9\u03BA\u03BD\u03BF\u03C1\u03C5",
    U"abeekmhopctyxsijdqwlhgiaikvopu"};

bool isLeftOut(UChar32 codePoint) noexcept {
  if (codePoint < 0x80) {
    return codePoint <= ' ' || codePoint == '-' || codePoint == '_' || codePoint == '.' ||
           codePoint == '"' || codePoint == '\'' || codePoint == '`';
  }
  const auto category = U_MASK(u_charType(codePoint));
  return (category & (U_GC_PD_MASK | U_GC_PI_MASK | U_GC_PF_MASK | U_GC_Z_MASK | U_GC_C_MASK)) !=
             0 ||
         u_hasBinaryProperty(codePoint, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

/// How many letters have to be changed, left out, added or exchanged with the next one.
std::size_t distanceOf(const std::u32string& left, const std::u32string& right) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last(right.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= left.size(); ++i) {
    std::vector<std::size_t> row(right.size() + 1, i);
    for (std::size_t j = 1; j <= right.size(); ++j) {
      row[j] = std::min(
          {last[j] + 1, row[j - 1] + 1, last[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
        row[j] = std::min(row[j], before[j - 2] + 1);
      }
    }
    before = std::exchange(last, std::move(row));
  }
  return last.back();
}

}  // namespace

std::u32string plainForm(std::string_view text) {
  std::u32string plain;
  text = text.substr(0, LONGEST);
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = util::internal::decodeUtf8(text, at);
    if (codePoint < 0x80) {
      if (!isLeftOut(static_cast<UChar32>(codePoint))) {
        plain += static_cast<unsigned char>(util::ascii::lowerCase(static_cast<char>(codePoint)));
      }
    } else if (codePoint != util::internal::NOT_UTF8 &&
               !isLeftOut(static_cast<UChar32>(codePoint))) {
      const auto folded =
          static_cast<char32_t>(u_foldCase(static_cast<UChar32>(codePoint), U_FOLD_CASE_DEFAULT));
      const std::size_t found = LOOK_ALIKES.first.find(folded);
      plain += found == std::u32string_view::npos ? folded : LOOK_ALIKES.second[found];
    }
  }
  return plain;
}

bool looksLike(std::string_view left, std::string_view right) {
  const std::u32string plain = plainForm(left);
  return !plain.empty() && plain == plainForm(right);
}

void NearestName::consider(std::string_view known) {
  const std::u32string plain = plainForm(known);
  const std::size_t longer = std::max(plain.size(), written_.size());
  const std::size_t shorter = std::min(plain.size(), written_.size());
  const std::size_t limit = reach_ == Reach::CERTAIN ? 1 : std::max<std::size_t>(longer / 3, 1);
  if (shorter == 0 || longer - shorter > limit) {
    return;
  }
  const std::size_t distance = distanceOf(written_, plain);
  if (distance > limit || known == name_) {
    return;
  }
  if (count_ == 0 || distance < distance_) {
    name_ = known;
    distance_ = distance;
    count_ = 0;
  }
  count_ += distance == distance_ ? 1 : 0;
}

void sortByLikeness(std::string_view written, std::vector<std::string>& names) {
  const std::u32string plain = plainForm(written).substr(0, 64);  // a document may have many
  std::vector<std::pair<std::size_t, std::string>> sorted;
  for (std::string& name : names) {
    const std::string_view local = std::string_view(name).substr(name.find(':') + 1);
    sorted.emplace_back(distanceOf(plain, plainForm(local)), std::move(name));
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::transform(sorted.begin(), sorted.end(), names.begin(),
                 [](auto& entry) { return std::move(entry.second); });
}

std::string_view suggestedWord(std::string_view written, std::string_view on,
                               std::string_view off) {
  constexpr struct {
    std::string_view yes;
    std::string_view no;
  } PAIRS[] = {{"true", "false"}, {"yes", "no"}};
  for (const std::string_view word : {on, off}) {
    if (looksLike(written, word)) {
      return word;
    }
  }
  // A switch may be thrown by a "no".
  const bool thrownByNo = std::any_of(std::begin(PAIRS), std::end(PAIRS),
                                      [&](const auto& pair) { return on == pair.no; });
  for (const auto& pair : PAIRS) {
    if (looksLike(written, pair.yes) || looksLike(written, pair.no)) {
      return looksLike(written, pair.yes) != thrownByNo ? on : off;
    }
  }
  return {};
}

}  // namespace orvane::nimbrel::check
