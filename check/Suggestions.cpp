#include "check/Suggestions.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "check/PackageFiles.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/Ascii.h"
#include "util/IRIParser.h"
#include "util/StringUtil.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

using config::AttributeDescription;
using util::XmlNode;

/// Longer texts are no misspelt name.
constexpr std::size_t LONGEST = 256;

/// Letters of other scripts that are taken for Latin ones, in lower case. Not the whole list of
/// Unicode's UTS #39: the library that has it takes an eighth of the tool's start.
constexpr std::pair<std::u32string_view, std::u32string_view> LOOK_ALIKES = {
    U"\u0430\u0432\u0435\u0451\u043A\u043C\u043D\u043E\u0440\u0441\u0442\u0443\u0445\u0455\u0456"
    U"\u0458\u0501\u051B\u051D\u04CF\u04BB\u0261\u0131\u03B1\u03B9\u03BA\u03BD\u03BF\u03C1\u03C5",
    U"abeekmhopctyxsijdqwlhgiaikvopu"};

constexpr std::u32string_view LEFT_OUT = U"-_.\"'`";  // of ASCII

/// What a character is that looks as if it were another one, or none.
enum class Look { LETTER, DASH, BLANK, NOTHING };

Look lookOf(char32_t codePoint) noexcept {
  const auto character = static_cast<UChar32>(codePoint);
  const std::uint32_t category = codePoint < 0x80 ? 0 : U_MASK(u_charType(character));
  if ((category & (U_GC_PI_MASK | U_GC_PF_MASK | U_GC_C_MASK)) != 0 ||
      u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0) {
    return Look::NOTHING;  // or a quote, which people put around what they mean
  }
  return (category & U_GC_PD_MASK) != 0  ? Look::DASH
         : (category & U_GC_Z_MASK) != 0 ? Look::BLANK
                                         : Look::LETTER;
}

/// How many letters have to be changed, left out, added or exchanged with the next one; more than
/// `limit` is not counted.
std::size_t distanceOf(const std::u32string& left, const std::u32string& right, std::size_t limit) {
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
    if (*std::min_element(row.begin(), row.end()) > limit) {
      return limit + 1;
    }
    before = std::exchange(last, std::move(row));
  }
  return last.back();
}

/// Of a name with a prefix, the name; an address has none.
std::u32string plainLocalPart(std::string_view name) {
  const std::size_t begin = name.find(':') + 1;
  return plainForm(name.substr(begin, 1) == "/" ? name : name.substr(begin));
}

/// Names that authors take from other vocabularies.
constexpr struct {
  std::string_view written;
  std::string_view meant;
} SYNONYMS[] = {{"href", "src"},      {"src", "href"},      {"path", "src"},
                {"file", "src"},      {"uri", "origin"},    {"url", "origin"},
                {"uri", "href"},      {"url", "href"},      {"uri", "src"},
                {"url", "src"},       {"key", "name"},      {"name", "key"},
                {"id", "name"},       {"mail", "email"},    {"lang", "xml:lang"},
                {"href", "origin"},   {"source", "src"},    {"src", "resource"},
                {"href", "resource"}, {"path", "resource"}, {"file", "resource"}};

Suggestion meantLanguage(const XmlNode& element) {
  return element.attributeView("lang", config::XML_NAMESPACE).data() == nullptr
             ? Suggestion{"xml:lang", true}
             : Suggestion();
}

/// The word that a switch was meant to have: one that looks like one of its own, or the word of the
/// other pair ("true" for "yes", "no" for "false").
Suggestion meantWord(std::string_view written, const config::SwitchWords& words) {
  constexpr std::string_view YES[] = {"true", "yes"};
  constexpr std::string_view NO[] = {"false", "no"};
  const auto isLike = [&](std::string_view word) { return looksLike(written, word); };
  for (const auto& known : {words.trigger, words.opposite}) {
    if (const auto* const word = std::find_if(known, known + 2, isLike); word != known + 2) {
      return {std::string(*word), true};
    }
  }
  const bool isYes = std::any_of(std::begin(YES), std::end(YES), isLike);
  if (!isYes && std::none_of(std::begin(NO), std::end(NO), isLike)) {
    return {};
  }
  const std::string_view meant =
      (isYes != isAmong(NO, words.trigger[0]) ? words.trigger : words.opposite)[0];
  return {std::string(meant), isAmong(YES, meant) || isAmong(NO, meant)};
}

/// The IRI that a text with blanks was meant to be. Blanks in an authority, or between two
/// addresses, are another mistake.
std::string meantIri(std::string_view text) {
  constexpr std::string_view SCHEME_END = "://";
  const std::size_t scheme = text.find(SCHEME_END);
  if (scheme != std::string_view::npos) {
    const std::size_t authority = scheme + SCHEME_END.size();
    const std::size_t end = text.find_first_of("/?#", authority);
    if (text.substr(0, end).find(' ') != std::string_view::npos ||
        text.find(SCHEME_END, authority) != std::string_view::npos) {
      return {};
    }
  }
  std::string iri;
  for (const char c : text) {
    iri += c == ' ' ? "%20" : std::string(1, c);
  }
  util::Option<util::IRI> parsed;
  return util::IRIParser().tryParse(iri.c_str(), parsed) ? iri : "";
}

}  // namespace

std::u32string plainForm(std::string_view text) {
  std::u32string plain;
  text = text.substr(0, LONGEST);
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = util::internal::decodeUtf8(text, at);
    if (codePoint < 0x80) {
      if (codePoint > ' ' && LEFT_OUT.find(codePoint) == std::u32string_view::npos) {
        plain += static_cast<unsigned char>(util::ascii::lowerCase(static_cast<char>(codePoint)));
      }
    } else if (lookOf(codePoint) == Look::LETTER) {
      const auto folded =
          static_cast<char32_t>(u_foldCase(static_cast<UChar32>(codePoint), U_FOLD_CASE_DEFAULT));
      const std::size_t found = LOOK_ALIKES.first.find(folded);
      plain += found == std::u32string_view::npos ? folded : LOOK_ALIKES.second[found];
    }
  }
  return plain;
}

std::string asTyped(std::string_view text) {
  std::string typed;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    const char32_t codePoint = util::internal::decodeUtf8(text, at);
    const Look look = lookOf(codePoint);
    if (look == Look::LETTER) {
      typed += text.substr(begin, at - begin);
    } else if (look != Look::NOTHING) {
      typed += look == Look::DASH ? '-' : ' ';
    }
  }
  return zel::util::StringUtil::squeezeAndTrim(typed);
}

bool looksLike(std::string_view left, std::string_view right) {
  const std::u32string plain = plainForm(left);
  return !plain.empty() && plain == plainForm(right);
}

Suggestion nearestName(std::string_view written, const std::vector<std::string>& known,
                       Reach reach) {
  if (std::find(known.begin(), known.end(), written) != known.end()) {
    return {std::string(written), true};  // which is quick
  }
  const std::u32string plain = plainForm(written);
  Suggestion nearest;
  std::size_t least = LONGEST;
  for (const std::string& name : known) {
    const std::u32string other = plainLocalPart(name);
    const auto [shorter, longer] = std::minmax({plain.size(), other.size()});  // not references
    const std::size_t limit = reach == Reach::CERTAIN ? 1 : std::max<std::size_t>(longer / 3, 1);
    if (shorter == 0 || longer - shorter > limit) {
      continue;
    }
    const std::size_t distance = distanceOf(plain, other, limit);
    if (distance <= limit && distance <= least) {
      // Of two that are as near it is not known which.
      nearest = distance == least ? Suggestion() : Suggestion{name, distance <= 1};
      least = distance;
    }
  }
  return nearest;
}

void sortByLikeness(std::string_view written, std::vector<std::string>& names) {
  const std::u32string plain = plainForm(written).substr(0, 64);  // a document may have many
  std::vector<std::pair<std::size_t, std::string>> sorted;
  sorted.reserve(names.size());
  for (std::string& name : names) {
    sorted.emplace_back(distanceOf(plain, plainLocalPart(name), LONGEST), std::move(name));
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::transform(sorted.begin(), sorted.end(), names.begin(),
                 [](auto& entry) { return std::move(entry.second); });
}

Suggestion suggestedElement(const XmlNode& element) {
  constexpr std::size_t SHORT = 4;
  constexpr std::string_view WORDS[] = {"reference", "context", "contend",  "resource",
                                        "gesture",   "expert",  "massaging"};
  const std::string_view written = element.nameView();
  if (written.find(':') != std::string_view::npos) {
    return {};  // the prefix is the mistake
  }
  Suggestion meant = nearestName(written, childNames(element.parent()));
  const std::string_view name = std::string_view(meant.text).substr(meant.text.find(':') + 1);
  // A letter replaced in a short name ("game"), and some words, mean something else.
  meant.isCertain = looksLike(written, name) ||
                    (meant.isCertain &&
                     (name.size() > SHORT || written.size() != name.size() ||
                      std::is_permutation(written.begin(), written.end(), name.begin())) &&
                     std::none_of(std::begin(WORDS), std::end(WORDS),
                                  [&](std::string_view word) { return looksLike(written, word); }));
  return meant;
}

Suggestion suggestedAttribute(const XmlNode& element, std::size_t index,
                              config::DescriptionList<AttributeDescription> known) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string_view written = attribute.name;
  if (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE ||
      written.find(':') != std::string_view::npos) {
    return {};  // a mistake in the prefix
  }
  if (attribute.namespaceUri == config::XML_NAMESPACE) {
    return meantLanguage(element);
  }
  if (attribute.namespaceUri.data() != nullptr && !isExtension(attribute.namespaceUri)) {
    return {suggestedNamespace(attribute.namespaceUri), true};
  }
  std::vector<std::string> names = namesOf(known);
  names.emplace_back("dir");  // which any element may have
  if (Suggestion meant = nearestName(written, names); !meant.text.empty()) {
    return meant;
  }
  for (const auto& row : SYNONYMS) {
    if (!looksLike(row.written, written)) {
      continue;
    }
    if (row.meant == "xml:lang") {
      return meantLanguage(element);
    }
    const AttributeDescription* const meant = findName(known, row.meant);
    if (meant != nullptr &&
        element.attributeView(meant->name, namespaceOf(*meant)).data() == nullptr) {
      return {std::string(row.meant), true};
    }
  }
  return {};
}

Suggestion suggestionFor(const Diagnostic& finding) {
  // Of a short value only: a namespace may be long, and many elements may have it.
  const auto value = [&] { return zel::util::StringUtil::squeezeAndTrim(finding.value); };
  // The file that is there; nothing when it is the one that is written.
  const auto unless = [&](const std::string& written) {
    return Suggestion{finding.name == written ? "" : std::string(finding.name)};
  };
  switch (finding.code) {
    case FindingCode::WRONG_ROOT:
    case FindingCode::UNKNOWN_ELEMENT:
    case FindingCode::UNEXPECTED_CHILD:
      if (finding.attribute == "xmlns") {
        return {finding.code == FindingCode::WRONG_ROOT ? config::W3C_WIDGETS_NAMESPACE
                                                        : suggestedNamespace(finding.value),
                true};
      }
      if (finding.element != nullptr) {
        Suggestion meant = suggestedElement(*finding.element);
        // Else its prefix stands for another namespace.
        return meant.text == finding.name ? Suggestion() : meant;
      }
      return {};
    case FindingCode::UNKNOWN_ATTRIBUTE:
      return suggestedAttribute(*finding.element, finding.attributeIndex,
                                attributesOf(*finding.element));
    case FindingCode::UNKNOWN_KEY:
      return nearestName(value(), namesOf(describe(*finding.element->parent())->keys));
    case FindingCode::SIMILAR_KEY:  // which is allowed
      return {nearestName(value(), namesOf(describe(*finding.element->parent())->keys)).text};
    case FindingCode::UNKNOWN_WORD: {
      const config::KeyDescription* const key =
          finding.attribute == "value" ? describeSetting(*finding.element) : nullptr;
      if (key != nullptr && key->words != nullptr) {
        return meantWord(value(), *key->words);
      }
      Suggestion meant =
          nearestName(value(), {std::begin(DIRECTIONS), std::end(DIRECTIONS)}, Reach::CERTAIN);
      meant.isCertain = looksLike(value(), meant.text);
      return meant;
    }
    case FindingCode::NOT_A_BOOLEAN:
      return meantWord(value(), {{"true", "true"}, {"false", "false"}});
    case FindingCode::NOT_AN_IRI:
    case FindingCode::REQUIRED_FEATURE_NAME:
      // In the name of a feature a blank may separate two, and no identity is guessed.
      return {meantIri(value()), finding.attribute == "href"};
    case FindingCode::NOT_AN_ORIGIN:
      return adviceOnOrigin(value()).meant;
    case FindingCode::INVALID_VALUE:
    case FindingCode::SUSPICIOUS_VALUE:
      return adviceOnValue(kindOfValue(*finding.element, finding.attribute), value())
          .value_or(Advice())
          .meant;
    case FindingCode::MISSING_FILE:  // or it is there, for users of other languages
      return unless(resolvePath(value()));
    case FindingCode::OUTSIDE_PACKAGE:
      return unless(value());
    case FindingCode::UNKNOWN_TYPE:
      return {std::string(finding.name)};
    default:
      return {};
  }
}

}  // namespace orvane::nimbrel::check
