#include "tools/record/RecordPrinter.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "tools/record/RecordFields.h"
#include "tools/record/RecordText.h"

namespace orvane::nimbrel::tools {
namespace {

/// Writes the elements that were read, in order. Where an earlier one has the same long namespace,
/// the place of that one stands in place of it.
class ElementWriter {
 public:
  void write(JsonWriter& json, const config::Element& element) {
    const std::string_view uri = element.getNode()->namespaceView();
    const std::size_t place = count_++;
    const std::size_t first =
        uri.size() > LONG_NAMESPACE ? places_.emplace(uri.data(), place).first->second : place;
    json.object([&] {
      json.member("name", element.getNode()->nameView());
      if (first != place) {
        json.member("namespaceOf", first);
      } else {
        json.memberOrNull("namespace", uri);
      }
    });
  }

 private:
  std::size_t count_ = 0;
  std::map<const char*, std::size_t> places_;  // of the first with this namespace of the tree
};

/// Writes a value of the record: an absent option as null, a structure as an object with a key for
/// each of its fields.
template <typename Value>
void writeValue(JsonWriter& json, const Value& value) {
  if constexpr (std::is_same_v<Value, std::vector<config::Element>>) {
    ElementWriter elements;
    json.beginArray();
    for (const config::Element& element : value) {
      elements.write(json, element);
    }
    json.endArray();
  } else if constexpr (HAS_FIELDS<Value>) {
    json.object([&] {
      forEachField(value, [&](const auto& field, const auto& content) {
        json.key(field.name);
        writeValue(json, content);
      });
    });
  } else if constexpr (IS_OPTION<Value>) {
    value ? writeValue(json, value.get()) : json.value(nullptr);
  } else if constexpr (IS_LIST<Value>) {
    json.beginArray();
    for (const auto& entry : value) {
      writeValue(json, entry);
    }
    json.endArray();
  } else if constexpr (IS_MAP<Value>) {
    json.beginObject();
    for (const auto& [name, content] : value) {
      json.key(name);
      writeValue(json, content);
    }
    json.endObject();
  } else {
    json.value(value);
  }
}

template <typename Write>
void printJsonLine(const std::string& prefix, const Write& write) {
  std::string line = prefix;
  JsonWriter json(JsonWriter::Layout::LINE, [&](std::string_view text) { line += text; });
  write(json);
  json.finish();
  writeOutput(line);
}

/// Prints a field for a script: one line for each value, after a prefix. Nothing for an absent
/// option; a text without its language; the entries of a list; a structure as JSON. All is escaped.
template <typename Value>
void printLines(const std::string& prefix, const Value& value) {
  if constexpr (IS_OPTION<Value>) {
    if (value) {
      printLines(prefix, value.get());
    }
  } else if constexpr (std::is_same_v<Value, std::vector<config::Element>>) {
    ElementWriter elements;
    for (const config::Element& element : value) {
      printJsonLine(prefix, [&](JsonWriter& json) { elements.write(json, element); });
    }
  } else if constexpr (IS_LIST<Value>) {
    for (const auto& entry : value) {
      printLines(prefix, entry);
    }
  } else if constexpr (std::is_same_v<Value, util::LocalizableString>) {
    printLines(prefix, value.c_str());
  } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
    writeOutput(prefix + escape(value) + '\n');
  } else {
    printJsonLine(prefix, [&](JsonWriter& json) { writeValue(json, value); });
  }
}

/// The path below the member called `name`; none when it does not lead there. Names from a document
/// may have dots themselves.
std::optional<std::string_view> below(std::string_view path, std::string_view name) {
  if (path == name) {
    return std::string_view();
  }
  const bool leads = !name.empty() && path.size() > name.size() + 1 && path[name.size()] == '.' &&
                     path.substr(0, name.size()) == name;
  return leads ? std::optional(path.substr(name.size() + 1)) : std::nullopt;
}

/// Calls `use` with what `path` leads to from a value, if that has it: the names of fields, the
/// keys of a map and the places in a list, with dots between. Returns whether some value of this
/// type has it; `value` may be null to ask for that alone.
template <typename Value, typename Use>
bool select(const Value* value, std::string_view path, const Use& use) {
  if (path.empty()) {
    if (value != nullptr) {
      use(*value);
    }
    return true;
  }
  if constexpr (HAS_FIELDS<Value>) {
    const auto selectIn = [&](const auto& field) {
      using Content = std::decay_t<std::invoke_result_t<decltype(field.member), const Value&>>;
      const auto rest = below(path, field.name);
      if (rest && value != nullptr) {
        const Content& content = std::invoke(field.member, *value);
        return select(&content, *rest, use);
      }
      return rest && select<Content>(nullptr, *rest, use);
    };
    return std::apply([&](const auto&... field) { return (selectIn(field) || ...); },
                      FIELDS<Value>);
  } else if constexpr (IS_OPTION<Value>) {
    return select(value != nullptr && *value ? &value->get() : nullptr, path, use);
  } else if constexpr (IS_LIST<Value>) {
    std::size_t place = 0;
    std::from_chars(path.data(), path.data() + path.size(), place);
    const auto rest = below(path, std::to_string(place));
    const bool isThere = value != nullptr && place < value->size();
    return rest && select(isThere ? &(*value)[place] : nullptr, *rest, use);
  } else if constexpr (IS_MAP<Value>) {
    if (value != nullptr) {
      for (const auto& entry : *value) {
        const auto rest = below(path, entry.first);
        if (rest && select(&entry.second, *rest, use)) {
          break;
        }
      }
    }
    return true;  // a document chooses the keys
  } else {
    return false;
  }
}

/// Adds the paths that lead to a value of this type and to what is in it.
template <typename Value>
void addPaths(std::vector<std::string>& paths, const std::string& path) {
  if constexpr (IS_OPTION<Value>) {
    addPaths<std::decay_t<decltype(std::declval<Value>().get())>>(paths, path);
    return;
  }
  paths.push_back(path);
  if constexpr (HAS_FIELDS<Value>) {
    const auto add = [&](const auto& field) {
      using Content = std::decay_t<std::invoke_result_t<decltype(field.member), const Value&>>;
      addPaths<Content>(paths, path + (path.empty() ? "" : ".") + field.name);
    };
    std::apply([&](const auto&... field) { (add(field), ...); }, FIELDS<Value>);
  } else if constexpr (IS_LIST<Value>) {
    addPaths<typename Value::value_type>(paths, path + ".0");
  }
}

}  // namespace

bool isField(const std::string& name) {
  return !name.empty() && select<ShownDocument>(nullptr, name, [](const auto& /*value*/) {});
}

std::vector<std::string> fieldNames() {
  std::vector<std::string> names;
  addPaths<ShownDocument>(names, "");
  return names;
}

RecordPrinter::RecordPrinter(RecordStyle style)
    : style_(std::move(style)),
      json_(isLines() ? JsonWriter::Layout::LINE : JsonWriter::Layout::INDENTED) {}

void RecordPrinter::print(const std::string& file, const ShownDocument& document) {
  if (isListed()) {
    printFile(file, "done", {}, &document);
  } else if (style_.format == "json") {
    printJson(document);
    json_.finish();
  } else if (style_.field) {
    const std::string prefix = style_.several ? escape(file) + ':' : "";
    select(&document, *style_.field, [&](const auto& value) { printLines(prefix, value); });
  } else {
    if (style_.several) {
      const std::string name = style_.colour ? BOLD + escape(file) + PLAIN : escape(file);
      writeOutput((std::exchange(first_, false) ? "" : "\n") + name + ":\n\n");
    }
    printRecordText(document, style_.colour);
  }
}

void RecordPrinter::printFailure(const std::string& file, const DocumentFailure& failure) {
  if (!isListed() || failure.status() == EXIT_UNUSABLE) {
    writeError(failure.what());
  }
  if (isListed()) {
    printFile(file, failure.status() == EXIT_REJECTED ? "rejected" : "unreadable",
              failure.problem(), nullptr);
  }
}

void RecordPrinter::finish() {
  if (isListed() && !isLines()) {
    beginList();
    json_.endArray();
    json_.finish();
  }
}

void RecordPrinter::beginList() {
  if (std::exchange(first_, false) && !isLines()) {
    json_.beginArray();
  }
}

void RecordPrinter::printFile(const std::string& file, const char* status,
                              const DocumentFailure::Problem& problem,
                              const ShownDocument* document) {
  beginList();
  json_.object([&] {
    json_.member("file", file);
    json_.member("status", status);
    json_.memberOrNull("reason", problem.reason);
    json_.memberOrNull("line", problem.line);
    json_.memberOrNull("column", problem.column);
    json_.key(style_.field ? "value" : "record");
    document == nullptr ? json_.value(nullptr) : printJson(*document);
  });
  isLines() ? json_.finish() : json_.flush();
}

void RecordPrinter::printJson(const ShownDocument& document) {
  bool isThere = false;
  select(&document, style_.field.value_or(""), [&](const auto& value) {
    isThere = true;
    writeValue(json_, value);
  });
  if (!isThere) {
    json_.value(nullptr);
  }
}

}  // namespace orvane::nimbrel::tools
