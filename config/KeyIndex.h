#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "config/Config.h"

namespace orvane::nimbrel::config::detail {

// What tells the entries of a list apart.
[[nodiscard]] inline std::string_view keyOf(const Config::Icon& icon) noexcept {
  return icon.src;
}
[[nodiscard]] inline std::string_view keyOf(const Config::Preference& preference) noexcept {
  return preference.name;
}
[[nodiscard]] inline std::string_view keyOf(const std::string& word) noexcept {
  return word;
}

/// Tells whether the key of a new entry is in a growing list, without searching the list. Valid
/// while the list is only appended to.
///
/// Keys are hashed. An author can choose keys whose hashes collide, at a cost that is the square of
/// the document's size: once too many are in one bucket, the keys are ordered instead.
template <typename Entry>
class KeyIndex {
 public:
  explicit KeyIndex(const std::vector<Entry>& list)
      : list_(list), hashed_(0, HashOf(), IsEqual{this}) {}
  KeyIndex(const KeyIndex&) = delete;
  KeyIndex& operator=(const KeyIndex&) = delete;
  ~KeyIndex() = default;

  /// Whether no entry has the key; the caller then appends the entry that has it.
  [[nodiscard]] bool insert(std::string_view key) {
    if (list_.size() < SMALL) {
      return std::none_of(list_.begin(), list_.end(),
                          [&](const Entry& entry) { return keyOf(entry) == key; });
    }
    for (; indexed_ < list_.size(); ++indexed_) {
      add(indexed_, keyOf(list_[indexed_]));
    }
    next_ = key;
    const bool isNew = add(indexed_, key);
    indexed_ += isNew ? 1 : 0;
    return isNew;
  }

 private:
  static constexpr std::size_t SMALL = 16;  // a list that is searched faster than indexed
  // Never by chance: of a million keys in as many buckets hardly ten are in one.
  static constexpr std::size_t LARGEST_BUCKET = 32;

  struct Key {
    std::size_t hash;
    std::size_t position;
  };
  struct HashOf {
    std::size_t operator()(const Key& key) const noexcept { return key.hash; }
  };
  struct IsEqual {
    const KeyIndex* index;
    bool operator()(const Key& left, const Key& right) const noexcept {
      return left.hash == right.hash && index->at(left.position) == index->at(right.position);
    }
  };

  [[nodiscard]] std::string_view at(std::size_t position) const noexcept {
    return position < list_.size() ? keyOf(list_[position]) : next_;
  }

  bool add(std::size_t position, std::string_view key) {
    if (!ordered_.empty()) {
      return ordered_.emplace(key).second;
    }
    const auto [place, isNew] = hashed_.insert({std::hash<std::string_view>()(key), position});
    if (isNew && hashed_.bucket_size(hashed_.bucket(*place)) > LARGEST_BUCKET) {
      for (const Key& known : hashed_) {
        ordered_.emplace(at(known.position));
      }
      hashed_.clear();
    }
    return isNew;
  }

  const std::vector<Entry>& list_;
  std::unordered_set<Key, HashOf, IsEqual> hashed_;
  std::set<std::string> ordered_;
  std::string_view next_;    // the key of the entry that `insert` is asked for
  std::size_t indexed_ = 0;  // entries that are in the index
};

}  // namespace orvane::nimbrel::config::detail
