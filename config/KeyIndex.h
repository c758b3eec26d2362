#pragma once

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/BasicConfig.h"

namespace orvane::nimbrel::config::detail {

/// Finds an entry of a growing list by its key without searching the list. Keeps positions only;
/// the keys are compared where they lie. Valid as long as the list is only appended to.
///
/// Ordered and not hashed: an author can choose keys that collide in a hash, whose cost would then
/// be the square of the document's size.
template <typename Entry>
class KeyIndex {
 public:
  KeyIndex(const std::vector<Entry>& list, std::string Entry::*key) noexcept
      : list_(list), key_(key), positions_(Less{&list, key}), hint_(positions_.end()) {}

  /// Whether some entry of the list has the key.
  [[nodiscard]] bool contains(std::string_view key) {
    for (; indexed_ < list_.size(); ++indexed_) {
      hint_ = positions_.insert(hint_, indexed_);
    }
    hint_ = positions_.lower_bound(key);  // where the key belongs if it comes next
    return hint_ != positions_.end() && list_[*hint_].*key_ == key;
  }

 private:
  struct Less {
    using is_transparent = void;

    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const noexcept {
      return keyOf(left) < keyOf(right);
    }
    [[nodiscard]] std::string_view keyOf(std::size_t position) const noexcept {
      return (*list)[position].*key;
    }
    [[nodiscard]] std::string_view keyOf(std::string_view text) const noexcept { return text; }

    const std::vector<Entry>* list;
    std::string Entry::*key;
  };

  const std::vector<Entry>& list_;
  std::string Entry::*key_;
  std::set<std::size_t, Less> positions_;
  typename std::set<std::size_t, Less>::iterator hint_;
  std::size_t indexed_ = 0;  // entries of the list that are in the index
};

/// The indexes of one walk over a document, during which only the handlers change the record.
struct WalkIndexes {
  explicit WalkIndexes(BasicConfig& record) noexcept
      : icons(record.icons(), &Config::Icon::src),
        preferences(record.preferences(), &Config::Preference::name) {}

  KeyIndex<Config::Icon> icons;
  KeyIndex<Config::Preference> preferences;
};

/// Whether some entry of `list` has the key; by the index if there is one and it is worth making.
template <typename Entry>
[[nodiscard]] bool hasKey(const std::vector<Entry>& list, std::string Entry::*key,
                          std::string_view text, KeyIndex<Entry>* index) {
  constexpr std::size_t SMALL = 16;
  if (index != nullptr && list.size() > SMALL) {
    return index->contains(text);
  }
  return std::any_of(list.begin(), list.end(),
                     [&](const Entry& entry) { return entry.*key == text; });
}

}  // namespace orvane::nimbrel::config::detail
