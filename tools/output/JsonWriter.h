#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "tools/output/JsonSink.h"

namespace orvane::nimbrel::tools {

/// Prints JSON as it comes. What is no UTF-8 is replaced, what a terminal would act on is escaped.
class JsonWriter : public JsonSink {
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

  void beginObject() override { begin('{'); }
  void endObject() override { end('}'); }
  void beginArray() override { begin('['); }
  void endArray() override { end(']'); }
  void key(std::string_view name) override;
  void string(std::string_view text) override;
  void literal(std::string_view json) override;

  /// Ends the text with a line break and hands on what is left. Another one may follow.
  void finish();
  /// Hands on what is there so far.
  void flush();

 private:
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
