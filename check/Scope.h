#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "check/Markup.h"
#include "check/Report.h"

namespace orvane::nimbrel::check {

/// The start tag of an element as it is written, and the namespaces that are declared there.
///
/// Made for going from one finding to the next in the order of the document: a tag is read once for
/// all findings on it and in it, however long it is. For one thread.
class Scope {
 public:
  /// The report has to live as long.
  explicit Scope(const Report& report) : report_(report) {}

  /// Goes to an element, to which the rest refers. False when its tag, or that of the root, is not
  /// certain.
  bool enter(const util::XmlNode& element);

  /// The tag of the element.
  [[nodiscard]] const Tag& tag() const noexcept { return own().tag; }
  /// The tag of the root.
  [[nodiscard]] const Tag& rootTag() const noexcept { return root().tag; }
  /// A part of the text.
  [[nodiscard]] std::string_view text(Span span) const noexcept;

  /// The prefix of the element with its colon; empty for none.
  [[nodiscard]] std::string prefix() const;
  /// The declaration that counts for the prefix of a name in this tag; null when it does not stand
  /// in the tag, in that of its parent or in that of the root.
  [[nodiscard]] const TagAttribute* declarationOf(std::string_view name);
  /// What to write in front of a name in this tag to have it in a namespace: a prefix with its
  /// colon, or nothing where the namespace is the default one. None when there is no such prefix.
  [[nodiscard]] std::optional<std::string> prefixFor(std::string_view namespaceUri,
                                                     bool isAttribute);

 private:
  struct Level {
    const util::XmlNode* element = nullptr;
    Tag tag;
  };

  bool read(Level& level, const util::XmlNode& element);
  [[nodiscard]] const Level& root() const noexcept { return levels_.front(); }
  [[nodiscard]] const Level& own() const noexcept { return levels_[depth_]; }
  /// The level of the parent; of the root itself its own.
  const Level& parentLevel();
  /// The declaration of a prefix in a tag; null when it does not stand there.
  [[nodiscard]] const TagAttribute* find(const Level& level, std::string_view prefix) const;

  const Report& report_;
  std::deque<Level> levels_;  // the last element of each depth that was read, from the root on
  std::size_t depth_ = 0;     // of the element
};

}  // namespace orvane::nimbrel::check
