#pragma once

#include <string>
#include <vector>

#include "util/Api.h"
#include "util/Option.h"
#include "util/SharedPtr.h"
#include "util/UnicodeUtil.h"

namespace orvane::nimbrel::util {

/// Text made of runs, each with its own language and direction, under a base direction and a
/// language tag of the whole.
///
///     <name xml:lang="en" dir="ltr">Chess <span dir="rtl" xml:lang="he">שחמט</span></name>
///       base LTR, tag "en";  runs: {"Chess ", LTR, "en"}, {"שחמט", RTL, "he"}
///
/// A value: copies are independent but for the shared Unicode service. All text is UTF-8; other
/// bytes pass through and are no white space. Const members may run on several threads at once:
/// nothing is computed or cached while reading. Members that change the text or assign another give
/// the strong guarantee: they change nothing when they let through `std::bad_alloc` or what the
/// Unicode service throws.
class NIMBREL_UTIL_API LocalizableString {
 public:
  /// A base direction. The values are fixed: records carry them on as numbers.
  enum Direction {
    LTR = 0,  ///< left to right
    RTL = 1,  ///< right to left
    LRO = 2,  ///< left-to-right override
    RLO = 3   ///< right-to-left override
  };

  /// One run of text. Its text is never empty.
  struct TextNode {
    std::string text;         ///< UTF-8
    Direction direction;      ///< direction in scope where the text stood
    std::string languageTag;  ///< BCP 47 tag as written; empty when none applied
  };

  /// An empty text from left to right, without a language, on the library's own Unicode service.
  LocalizableString();
  /// An empty text. Throws `std::invalid_argument` when the service is null.
  LocalizableString(std::shared_ptr<UnicodeUtil> unicodeUtil, const Direction& direction,
                    const std::string& languageTag);
  LocalizableString(const LocalizableString&);
  /// Leaves the source as a usable, empty text.
  LocalizableString(LocalizableString&& other) noexcept;
  LocalizableString& operator=(const LocalizableString&);
  /// Leaves the source as a usable text of unspecified content.
  LocalizableString& operator=(LocalizableString&& other) noexcept;
  virtual ~LocalizableString();

  /// Appends a run in the current base direction and language tag. Empty text adds no run.
  void append(const std::string& text);
  /// Appends a run with a direction and a tag of its own. Empty text adds no run.
  void append(const std::string& text, const Direction& direction, const std::string& languageTag);
  /// The same for a text that is not needed any more.
  void append(std::string&& text, const Direction& direction, const std::string& languageTag);
  /// Appends all runs of another string, which may be this one.
  void append(const LocalizableString& other);
  /// Appends runs at once, which takes less memory than one by one. Empty text adds no run.
  void append(std::vector<TextNode>&& runs);

  /// Replaces the base direction; runs keep theirs.
  void setDirection(const Direction& direction) noexcept;
  /// Replaces the language tag; runs keep theirs.
  void setLanguageTag(const std::string& languageTag);

  /// Makes one space (U+0020) of every sequence of Unicode White_Space, also of one that spans
  /// runs; its place is the run where it begins. Runs that become empty are dropped.
  void normalizeWhitespace();
  /// Removes Unicode White_Space at both ends. Runs that become empty are dropped.
  void trim();

  /// True when there is no character.
  [[nodiscard]] bool empty() const noexcept;
  /// The text of all runs, NUL-terminated; valid while this string lives and is not changed.
  [[nodiscard]] const char* c_str() const noexcept;

  /// The base direction.
  [[nodiscard]] Direction getDirection() const noexcept;
  /// The language tag of the whole; empty when none applied. Valid while this string is unchanged.
  [[nodiscard]] const std::string& getLanguageTag() const noexcept;
  /// The runs in order; valid while this string lives and is not changed.
  [[nodiscard]] const std::vector<TextNode>& getTextNodes() const noexcept;

 private:
  void appendRun(TextNode run);
  void replaceRuns(std::vector<TextNode> runs);

  std::shared_ptr<UnicodeUtil> unicodeUtil_;
  Direction direction_;
  std::string languageTag_;
  std::vector<TextNode> textNodes_;
  Option<std::string> flattened_;  // the text of all runs; None at most while there are none
};

}  // namespace orvane::nimbrel::util
