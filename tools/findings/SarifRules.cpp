#include "tools/findings/SarifRules.h"

#include <string>

#include "check/FindingCode.h"
#include "tools/findings/Explanation.h"

namespace orvane::nimbrel::tools {
namespace {

using check::CodeDescription;

constexpr std::string_view INFORMATION = NIMBREL_DOCUMENTATION_URI;

/// By level: what it means, and what code scanning calls it.
constexpr struct {
  const char* meaning;
  const char* severity;
} LEVELS[] = {
    {"A note says that something has no effect, or may not be what was meant.", "recommendation"},
    {"A warning says that something is ignored, or does not work in its package.", "warning"},
    {"An error rejects the document.", "error"},
};

std::string firstSentence(std::string_view text) {
  const std::size_t end = text.find(". ");
  return std::string(text.substr(0, end == std::string_view::npos ? end : end + 1));
}

void writeCode(std::string& text, const char* label, std::string_view code) {
  text.append("\n\n").append(label).append(":\n\n```xml\n").append(code).append("\n```");
}

void writeRule(JsonWriter& json, const CodeDescription& kind) {
  const auto& level = LEVELS[static_cast<std::size_t>(kind.level)];
  const std::string description = std::string(kind.summary) + ' ' + level.meaning;
  std::string markdown = description;
  writeCode(markdown, "Bad", kind.bad);
  if (!kind.fixed.empty()) {
    writeCode(markdown, "Fixed", kind.fixed);
  }
  json.member("id", kind.name);
  writeSarifMessage(json, "shortDescription", firstSentence(kind.summary));
  writeSarifMessage(json, "fullDescription", description);
  if (!INFORMATION.empty()) {
    json.member("helpUri", std::string(INFORMATION) + "findings.md#" + std::string(kind.name));
  }
  json.object("help", [&] {
    json.member("text", description + "\n\n" + examplesOf(kind));
    json.member("markdown", markdown);
  });
  json.object("defaultConfiguration", [&] { json.member("level", check::levelName(kind.level)); });
  json.object("properties", [&] {
    json.member("precision", "very-high");
    json.member("problem.severity", level.severity);
  });
}

}  // namespace

void writeSarifMessage(JsonWriter& json, std::string_view name, std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    escaped.append(c == '[' || c == ']' ? 1 : 0, '\\');
    escaped.append(c == '{' || c == '}' ? 2 : 1, c);
  }
  json.object(name, [&] { json.member("text", escaped); });
}

void writeSarifTool(JsonWriter& json) {
  json.object("driver", [&] {
    json.member("name", "nimbrel-config");
    json.member("version", NIMBREL_VERSION);
    json.member("semanticVersion", NIMBREL_VERSION);
    if (!INFORMATION.empty()) {
      json.member("informationUri", INFORMATION);
    }
    json.list("rules", [&] {
      for (const CodeDescription& kind : check::codeDescriptions()) {
        json.object([&] { writeRule(json, kind); });
      }
    });
    json.listOfOne("notifications", [&] {
      json.member("id", UNREADABLE_FILE);
      writeSarifMessage(json, "shortDescription", "A file cannot be read.");
      writeSarifMessage(json, "fullDescription", "A file cannot be read, so it was not checked.");
      writeSarifMessage(json, "help", "Look at the name of the file and at its permissions.");
    });
  });
}

}  // namespace orvane::nimbrel::tools
