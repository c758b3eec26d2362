#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "tools/output/JsonWriter.h"

namespace orvane::nimbrel::tools {

/// Prints a field for a script: one line for each value, after a prefix. Nothing for null; a text
/// without its language; the entries of a list; an object as JSON. All is escaped.
class FieldLines : public JsonSink {
 public:
  /// `prefix` is printed as it is.
  FieldLines(std::string prefix, JsonWriter::Write write);

  void beginObject() override { begin(true); }
  void endObject() override { end(true); }
  void beginArray() override { begin(false); }
  void endArray() override { end(false); }
  void key(std::string_view name) override;
  void string(std::string_view text) override;
  void literal(std::string_view json) override;

 private:
  void begin(bool isObject);
  void end(bool isObject);
  void print(std::string_view line);

  std::string prefix_;
  JsonWriter::Write write_;
  std::string object_;  // what is printed of a value that is an object
  JsonWriter json_;     // writes it
  std::size_t depth_ = 0;
  std::size_t valueDepth_ = 0;  // 1 within a list
  std::string key_;             // of the object
  std::string text_;            // what stands under "text" in it
  bool isText_ = false;
};

}  // namespace orvane::nimbrel::tools
