#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "config/KeyedHash.h"

namespace orvane::nimbrel::config::detail {

/// Finds an entry of a growing list by its key without searching the list: the 100,000th icon costs
/// what the first did. Keeps positions and hashes only; the keys are compared where they lie.
///
/// `keyOf` is what finds an entry's key, such as a pointer to its member. Valid as long as the list
/// is only appended to. Small lists are searched one by one.
class KeyIndex {
 public:
  /// Whether some entry of `list` has the key.
  template <typename Entry, typename KeyOf>
  [[nodiscard]] bool contains(const std::vector<Entry>& list, KeyOf keyOf, std::string_view key) {
    if (list.size() < SMALL) {
      return search(list, keyOf, key);
    }
    for (; indexed_ < list.size(); ++indexed_) {
      insert(std::invoke(keyOf, list[indexed_]));
    }
    const std::uint32_t hash = hashOf(key);
    for (std::size_t slot = hash & mask(); slots_[slot].position != 0; slot = (slot + 1) & mask()) {
      if (slots_[slot].hash == hash && std::invoke(keyOf, list[slots_[slot].position - 1]) == key) {
        return true;
      }
    }
    return false;
  }

  /// The same one by one, without an index.
  template <typename Entry, typename KeyOf>
  [[nodiscard]] static bool search(const std::vector<Entry>& list, KeyOf keyOf,
                                   std::string_view key) {
    for (const Entry& entry : list) {
      if (std::invoke(keyOf, entry) == key) {
        return true;
      }
    }
    return false;
  }

 private:
  static constexpr std::size_t SMALL = 16;

  struct Slot {
    std::uint32_t hash;
    std::uint32_t position;  // counted from 1; 0: free
  };

  [[nodiscard]] std::uint32_t hashOf(std::string_view key) const noexcept {
    return static_cast<std::uint32_t>((*hash_)(key));
  }

  [[nodiscard]] std::size_t mask() const noexcept { return slots_.size() - 1; }

  void insert(std::string_view key) {
    if (!hash_) {
      hash_.emplace();
    }
    if (2 * (indexed_ + 1) > slots_.size()) {
      grow();
    }
    place({hashOf(key), static_cast<std::uint32_t>(indexed_ + 1)});
  }

  void place(Slot entry) noexcept {
    std::size_t slot = entry.hash & mask();
    while (slots_[slot].position != 0) {
      slot = (slot + 1) & mask();
    }
    slots_[slot] = entry;
  }

  void grow() {
    std::vector<Slot> larger(slots_.empty() ? 4 * SMALL : 2 * slots_.size());
    slots_.swap(larger);
    for (const Slot& entry : larger) {
      if (entry.position != 0) {
        place(entry);
      }
    }
  }

  std::vector<Slot> slots_;        // a power of two of them, at most half taken
  std::optional<KeyedHash> hash_;  // made when there is something to index
  std::size_t indexed_ = 0;        // entries of the list that are in the index
};

/// Whether some entry of `list` has the key; by the index if there is one.
template <typename Entry, typename KeyOf>
[[nodiscard]] bool hasKey(const std::vector<Entry>& list, KeyOf keyOf, std::string_view key,
                          KeyIndex* index) {
  return index != nullptr ? index->contains(list, keyOf, key) : KeyIndex::search(list, keyOf, key);
}

/// The indexes of one walk over a document, during which only the handlers change the record.
struct WalkIndexes {
  KeyIndex icons;
  KeyIndex preferences;
};

}  // namespace orvane::nimbrel::config::detail
