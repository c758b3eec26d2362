#pragma once

#include <cstddef>
#include <string_view>

#include "config/handlers/ExtensionFrame.h"

// Tables of the keys of extension elements: how each is described and what it does.
namespace orvane::nimbrel::config::detail {

/// What a value does to a record of settings.
template <typename Record>
using Effect = void (*)(Record& record, const Setting& setting);

template <typename Record>
struct KeyRow {
  KeyDescription description;
  Effect<Record> effect;
};

/// The keys of an element in the order in which they are tried. Keys are distinct.
template <typename Record, std::size_t SIZE>
class KeyTable {
 public:
  // NOLINTNEXTLINE(google-explicit-constructor): so that a table is its rows in braces
  constexpr KeyTable(const KeyRow<Record> (&rows)[SIZE]) {
    for (std::size_t i = 0; i < SIZE; ++i) {
      descriptions_[i] = rows[i].description;
      effects_[i] = rows[i].effect;
    }
  }

  // NOLINTNEXTLINE(google-explicit-constructor): so that an element names its table only
  constexpr operator DescriptionList<KeyDescription>() const noexcept { return descriptions_; }

  /// Does what a setting asks for. False when its key is not in the table.
  bool apply(std::string_view key, Record& record, const Setting& setting) const {
    for (std::size_t i = 0; i < SIZE; ++i) {
      if (descriptions_[i].name == key) {
        effects_[i](record, setting);
        return true;
      }
    }
    return false;
  }

  /// The same; reports a key that is not in the table.
  void applyOrReport(Record& record, const Setting& setting) const {
    if (!apply(setting.keyText(), record, setting)) {
      setting.reportKey(FindingCode::UNKNOWN_KEY);
    }
  }

 private:
  KeyDescription descriptions_[SIZE] = {};
  Effect<Record> effects_[SIZE] = {};
};

template <typename Member>
struct MemberPointer;
template <typename RecordType, typename Value>
struct MemberPointer<Value RecordType::*> {
  using Record = RecordType;
};
/// The record of which MEMBER is a member.
template <auto MEMBER>
using RecordOf = typename MemberPointer<decltype(MEMBER)>::Record;

/// @name Rows of a key table, by what the value does to MEMBER
/// The field is named only where it is called otherwise than the key.
/// @{
template <auto MEMBER>
constexpr KeyRow<RecordOf<MEMBER>> storesText(std::string_view key, std::string_view field = {},
                                              ValueKind kind = ValueKind::TEXT) {
  return {{key, kind, KeyRule::LAST_COUNTS, field.empty() ? key : field},
          [](RecordOf<MEMBER>& record, const Setting& setting) {
            record.*MEMBER = setting.valueText();
          }};
}

template <auto MEMBER>
constexpr KeyRow<RecordOf<MEMBER>> appendsText(std::string_view key, std::string_view field) {
  return {{key, ValueKind::TEXT, KeyRule::ACCUMULATES, field},
          [](RecordOf<MEMBER>& record, const Setting& setting) {
            (record.*MEMBER).push_back(setting.valueText());
          }};
}

/// A bad number ends the parse.
template <auto MEMBER>
constexpr KeyRow<RecordOf<MEMBER>> storesNumber(std::string_view key, std::string_view field = {}) {
  return {
      {key, ValueKind::NUMBER, KeyRule::LAST_COUNTS, field.empty() ? key : field},
      [](RecordOf<MEMBER>& record, const Setting& setting) { record.*MEMBER = setting.number(); }};
}

/// Assigned both ways: any value but a trigger word clears the flag.
template <auto MEMBER, const SwitchWords& WORDS>
constexpr KeyRow<RecordOf<MEMBER>> storesSwitch(std::string_view key, std::string_view field = {}) {
  return {{key, ValueKind::SWITCH, KeyRule::LAST_COUNTS, field.empty() ? key : field, &WORDS},
          [](RecordOf<MEMBER>& record, const Setting& setting) {
            record.*MEMBER = setting.isTriggered(WORDS);
          }};
}

/// Makes the flag VALUE, which is not its default, and never undoes it.
template <auto MEMBER, const SwitchWords& WORDS, bool VALUE = true>
constexpr KeyRow<RecordOf<MEMBER>> raises(std::string_view key, std::string_view field = {}) {
  return {{key, ValueKind::SWITCH, KeyRule::ONLY_RAISED, field.empty() ? key : field, &WORDS},
          [](RecordOf<MEMBER>& record, const Setting& setting) {
            if (setting.isTriggered(WORDS)) {
              record.*MEMBER = VALUE;
            } else if (record.*MEMBER == VALUE) {
              setting.reportValue(FindingCode::REPEATED);
            }
          }};
}
/// @}

}  // namespace orvane::nimbrel::config::detail
