#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "config/BasicConfig.h"
#include "tools/record/RecordJson.h"

namespace orvane::nimbrel::test {

/// Writes a line for each value, "icons.0.src = a.png". No value can pass for another or for two.
class ValueLines : public tools::JsonSink {
 public:
  void beginObject() override { begin(false); }
  void endObject() override { open_.pop_back(); }
  void beginArray() override { begin(true); }
  void endArray() override { open_.pop_back(); }
  void key(std::string_view name) override { key_ = name; }
  void string(std::string_view text) override { add(nextPath(), '"' + std::string(text) + '"'); }
  void literal(std::string_view json) override { add(nextPath(), json); }

  void add(const std::string& path, std::string_view value) {
    text_ += path + " = ";
    for (const char c : value) {
      text_ += c == '\n' ? "\\n" : c == '\\' ? "\\\\" : std::string(1, c);
    }
    text_ += '\n';
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  struct Container {
    std::string path;
    bool isArray;
    std::size_t entries = 0;
  };

  void begin(bool isArray) { open_.push_back({open_.empty() ? "" : nextPath() + '.', isArray}); }

  std::string nextPath() {
    Container& in = open_.back();
    return in.path + (in.isArray ? std::to_string(in.entries++) : key_);
  }

  std::vector<Container> open_;
  std::string key_;
  std::string text_;
};

/// Everything that a record holds as one text: what the tool shows of it and what its elements say.
/// Two records are equal exactly when their dumps are.
inline std::string dumpOf(config::BasicConfig& record) {
  ValueLines lines;
  tools::recordToJson(lines, record, "");
  for (const config::Element& element : record.elements()) {
    lines.add("line", std::to_string(element.getNode()->getLineNumber()));
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
