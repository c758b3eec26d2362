#pragma once

#include <algorithm>
#include <string>
#include <type_traits>

#include "config/BasicConfig.h"
#include "tools/record/RecordFields.h"
#include "tools/record/RecordText.h"

namespace orvane::nimbrel::test {

/// The lines of a dump, "icons.0.src = a.png". No value can pass for another or for two.
class ValueLines {
 public:
  template <typename Value>
  void add(const std::string& path, const Value& value) {
    if constexpr (tools::HAS_FIELDS<Value>) {
      tools::forEachField(value, [&](const auto& field, const auto& content) {
        add(path + '.' + field.name, content);
      });
    } else if constexpr (tools::IS_OPTION<Value>) {
      value ? add(path, value.get()) : addLine(path, "null");
    } else if constexpr (tools::IS_LIST<Value>) {
      for (std::size_t i = 0; i < value.size(); ++i) {
        add(path + '.' + std::to_string(i), value[i]);
      }
    } else if constexpr (tools::IS_MAP<Value>) {
      for (const auto& [name, content] : value) {
        add(std::string(path).append(1, '.').append(name), content);
      }
    } else if constexpr (std::is_arithmetic_v<Value>) {
      addLine(path, tools::shortest(+value));
    } else {
      addLine(path, '"' + std::string(value) + '"');
    }
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void addLine(const std::string& path, const std::string& value) {
    text_ += path + " = ";
    for (const char c : value) {
      text_ += c == '\n' ? "\\n" : c == '\\' ? "\\\\" : std::string(1, c);
    }
    text_ += '\n';
  }

  std::string text_;
};

/// Everything that a record holds as one text: what the tool shows of it and what its elements say.
/// Two records are equal exactly when their dumps are.
inline std::string dumpOf(config::BasicConfig& record) {
  ValueLines lines;
  tools::forEachField(tools::ShownDocument{record, ""},
                      [&](const auto& field, const auto& value) { lines.add(field.name, value); });
  for (const config::Element& element : record.elements()) {
    lines.add("line", element.getNode()->getLineNumber());
    lines.add("content", element.getTextContent().c_str());
  }
  for (const config::Config::AccessRequest& request : record.accessRequestList()) {
    lines.add("origin", request.element->getSingleAttributeValue("origin").c_str());
  }
  return lines.text();
}

/// The first line in which two texts differ, such as two dumps, from both; of a long one its name
/// and what is around the difference. Empty when there is none.
inline std::string difference(const std::string& actual, const std::string& expected) {
  if (actual == expected) {
    return {};
  }
  const auto at = static_cast<std::size_t>(
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first -
      actual.begin());
  const auto lineOf = [at](const std::string& text) {
    const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    const std::string line = text.substr(begin, text.find('\n', begin) - begin);
    constexpr std::size_t AROUND = 60;
    return at - begin <= AROUND && line.size() <= 2 * AROUND
               ? line
               : line.substr(0, line.find(" = ")) + ": ..." +
                     line.substr(std::max(at - begin, AROUND) - AROUND, 2 * AROUND) + "...";
  };
  return lineOf(actual) + " is to be " + lineOf(expected);
}

}  // namespace orvane::nimbrel::test
