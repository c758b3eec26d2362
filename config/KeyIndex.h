#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/BasicConfig.h"
#include "config/KeyedHash.h"

namespace orvane::nimbrel::config::detail {

/// Finds an entry of a growing list by its key without searching the list. Keeps positions and
/// hashes only; the keys are compared where they lie. Valid as long as the list is only appended
/// to.
template <typename Entry>
class KeyIndex {
 public:
  KeyIndex(const std::vector<Entry>& list, std::string Entry::*key) noexcept
      : list_(list), key_(key) {}

  /// Whether some entry of the list, which is not empty, has the key.
  [[nodiscard]] bool contains(std::string_view key) {
    for (; indexed_ < list_.size(); ++indexed_) {
      if (slots_.size() < 2 * (indexed_ + 1)) {
        grow();
      }
      const std::string_view next = list_[indexed_].*key_;
      const std::uint32_t hash = (*hash_)(next);
      slotOf(next, hash) = {hash, static_cast<std::uint32_t>(indexed_ + 1)};
    }
    return slotOf(key, (*hash_)(key)).entry != 0;
  }

 private:
  struct Slot {
    std::uint32_t hash;
    std::uint32_t entry;  // its position, counted from 1; 0: free
  };

  /// Where a key is, or where it belongs.
  [[nodiscard]] Slot& slotOf(std::string_view key, std::uint32_t hash) noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].entry != 0 &&
           (slots_[at].hash != hash || list_[slots_[at].entry - 1].*key_ != key)) {
      at = (at + 1) & mask;
    }
    return slots_[at];
  }

  void grow() {
    if (!hash_) {
      hash_.emplace();
    }
    std::vector<Slot> old(slots_.empty() ? 64 : 2 * slots_.size());
    slots_.swap(old);
    for (const Slot& slot : old) {
      if (slot.entry != 0) {
        slotOf(list_[slot.entry - 1].*key_, slot.hash) = slot;
      }
    }
  }

  const std::vector<Entry>& list_;
  std::string Entry::*key_;
  std::vector<Slot> slots_;        // a power of two of them, at most half taken
  std::optional<KeyedHash> hash_;  // made when there is something to index
  std::size_t indexed_ = 0;        // entries of the list that are in the index
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
