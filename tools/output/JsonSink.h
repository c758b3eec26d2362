#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvane::nimbrel::tools {

/// Takes a JSON text part by part, in order, so that nobody has to hold all of it.
///
/// The caller keeps the grammar: one value in all, in an object a key before each value.
class JsonSink {
 public:
  JsonSink() = default;
  JsonSink(const JsonSink&) = delete;
  JsonSink& operator=(const JsonSink&) = delete;
  virtual ~JsonSink() = default;

  virtual void beginObject() = 0;
  virtual void endObject() = 0;
  virtual void beginArray() = 0;
  virtual void endArray() = 0;
  virtual void key(std::string_view name) = 0;
  virtual void string(std::string_view text) = 0;
  /// A number, true, false or null, as JSON spells it.
  virtual void literal(std::string_view json) = 0;

  void value(std::string_view text) { string(text); }
  void value(const std::string& text) { string(text); }
  void value(const char* text) { string(text); }
  void value(std::nullptr_t /*null*/) { literal("null"); }
  void value(double number);
  /// As the shortest decimal that reads back as this float: 1.1F is 1.1, not 1.10000002384.
  void value(float number);
  template <typename Value, typename = std::enable_if_t<std::is_integral_v<Value>>>
  void value(Value whole) {
    if constexpr (std::is_same_v<Value, bool>) {
      literal(whole ? "true" : "false");
    } else {
      literal(std::to_string(whole));
    }
  }

  template <typename Value>
  void member(std::string_view name, const Value& content) {
    key(name);
    value(content);
  }
};

}  // namespace orvane::nimbrel::tools
