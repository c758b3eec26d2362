#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvane::nimbrel::tools {

/// Prints JSON as it comes, so that nobody has to hold all of it. What is no UTF-8 is replaced,
/// what a terminal would act on is escaped.
///
/// The caller keeps the grammar: one value in all, in an object a key before each value.
class JsonWriter {
 public:
  enum class Layout {
    INDENTED,  ///< a line for each value
    LINE       ///< all in one line
  };
  using Write = std::function<void(std::string_view)>;

  /// `write` gets the text in pieces; what it throws ends the call that handed it the piece.
  explicit JsonWriter(Layout layout, Write write);
  /// To standard output.
  explicit JsonWriter(Layout layout = Layout::INDENTED);

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  void key(std::string_view name);

  void value(std::string_view text);
  void value(const std::string& text) { value(std::string_view(text)); }
  void value(const char* text) { value(std::string_view(text)); }
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
  /// The same with null for an empty text and for 0.
  template <typename Value>
  void memberOrNull(std::string_view name, const Value& content) {
    key(name);
    content == Value() ? value(nullptr) : value(content);
  }

  /// An object with what `fill` writes.
  template <typename Fill>
  void object(const Fill& fill) {
    beginObject();
    fill();
    endObject();
  }
  template <typename Fill>
  void object(std::string_view name, const Fill& fill) {
    key(name);
    object(fill);
  }
  /// A list with what `fill` writes.
  template <typename Fill>
  void list(std::string_view name, const Fill& fill) {
    key(name);
    beginArray();
    fill();
    endArray();
  }
  /// A list of one object.
  template <typename Fill>
  void listOfOne(std::string_view name, const Fill& fill) {
    list(name, [&] { object(fill); });
  }

  /// Ends the text with a line break and hands on what is left. Another one may follow.
  void finish();
  /// Hands on what is there so far.
  void flush();

 private:
  void literal(std::string_view json);
  void begin(char bracket);
  void end(char bracket);
  void beginEntry();
  void breakLine();
  void quote(std::string_view text);

  Layout layout_;
  Write write_;
  std::string pending_;
  std::size_t depth_ = 0;
  bool first_ = true;  // nothing yet in the object or array
  bool afterKey_ = false;
};

}  // namespace orvane::nimbrel::tools
