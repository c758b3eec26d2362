#include <cstdio>
#include <string>

#include "check/Kind.h"
#include "check/Wording.h"
#include "tools/Escape.h"
#include "tools/Output.h"
#include "tools/findings/Excerpt.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/findings/Sentence.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Level;

constexpr std::size_t PIECE = 65536;
constexpr char PLAIN[] = "\x1b[0m";

const char* colourOf(Level level) noexcept {
  switch (level) {
    case Level::ERROR:
      return "\x1b[1;31m";
    case Level::WARNING:
      return "\x1b[1;33m";
    case Level::NOTE:
      break;
  }
  return "\x1b[1;36m";
}

void appendCount(std::string& text, std::size_t count, const char* noun) {
  if (count != 0) {
    text += (text.empty() ? "" : ", ") + std::to_string(count) + noun + (count == 1 ? "" : "s");
  }
}

std::string toText(const FindingCounts& counts) {
  std::string text;
  appendCount(text, counts.errors, " error");
  appendCount(text, counts.warnings, " warning");
  appendCount(text, counts.notes, " note");
  return text.empty() ? "no findings" : text;
}

class TextPrinter : public FindingPrinter {
 public:
  explicit TextPrinter(FindingStyle style) : style_(style) {}

 protected:
  void printDocument(const std::string& name, const check::Report& report) override {
    const std::string file = escape(name);
    std::string text;
    for (const check::Diagnostic& finding : report.findings()) {
      append(text, file, report, finding);
      if (text.size() >= PIECE) {
        writeOutput(text);
        text.clear();
      }
    }
    writeOutput(text);
  }

  void end(bool /*complete*/) override {
    if (!style_.quiet) {
      writeOutput(toText(counts()) + '\n');
    }
  }

 private:
  void append(std::string& text, const std::string& file, const check::Report& report,
              const check::Diagnostic& finding) const {
    const check::Kind& kind = check::kindOf(finding.code);
    const check::Position place = report.placeOf(finding).begin;
    text += file;
    if (place.line != 0) {
      text += ':' + std::to_string(place.line);
      text += place.column == 0 ? "" : ':' + std::to_string(place.column);
    }
    text += ": ";
    text += style_.colour ? colourOf(kind.level) : "";
    text += check::levelName(kind.level);
    text += style_.colour ? PLAIN : "";
    text += ": " + sentenceOf(check::wordingOf(finding)) + " [";
    text.append(kind.name).append("]\n");
    if (style_.source) {
      text += excerpt(report, finding);
    }
  }

  FindingStyle style_;
};

class SummaryPrinter : public FindingPrinter {
 protected:
  void printDocument(const std::string& /*name*/, const check::Report& /*report*/) override {}

  void end(bool /*complete*/) override {
    std::string text = "findings     files  level    code\n";
    for (const CodeCount& code : codes()) {
      char line[128];
      std::snprintf(line, sizeof(line), "%8zu  %8zu  %-7s  %s\n", code.findings, code.files,
                    check::levelName(code.kind->level).data(), code.kind->name.data());
      text += line;
    }
    text = codes().empty() ? std::string() : text;
    text += std::to_string(files().read + files().unreadable) + " files, " +
            std::to_string(files().rejected) + " rejected, " + std::to_string(files().unreadable) +
            " unreadable; " + toText(counts()) + '\n';
    writeOutput(text);
  }
};

}  // namespace

std::unique_ptr<FindingPrinter> textPrinter(FindingStyle style) {
  return std::make_unique<TextPrinter>(style);
}

std::unique_ptr<FindingPrinter> summaryPrinter() {
  return std::make_unique<SummaryPrinter>();
}

}  // namespace orvane::nimbrel::tools
