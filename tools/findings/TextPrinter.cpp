#include <algorithm>
#include <cstdio>
#include <string>

#include "check/FindingCode.h"
#include "check/Wording.h"
#include "tools/findings/Excerpt.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/findings/Sentence.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Level;

constexpr std::size_t PIECE = 65536;
constexpr char PLAIN[] = "\x1b[0m";
constexpr char BOLD[] = "\x1b[1m";
constexpr char FAINT[] = "\x1b[2m";

constexpr std::size_t DEFAULT_WIDTH = 100;
constexpr std::size_t LEAST_WIDTH = 40;
constexpr std::size_t FRAME = 14;  // of an excerpt: the gutter, and the marks of a cut

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
  const std::string fixed = counts.fixed ? std::to_string(*counts.fixed) + " fixed; " : "";
  return fixed + (text.empty() ? "no findings" : text);
}

class TextPrinter : public FindingPrinter {
 public:
  explicit TextPrinter(const FindingStyle& style) : style_(style) {
    if (style.terminal != 0) {
      width_ = std::clamp(style.terminal - std::min(style.terminal, FRAME), LEAST_WIDTH, width_);
    }
  }

 protected:
  void printDocument(const CheckedDocument& document) override {
    const check::Report& report = *document.report;
    const std::string file = escape(document.file);
    const std::string name = escape(document.name);
    std::string text;
    for (const check::Diagnostic& finding : report.findings()) {
      append(text, finding.isOfPackage ? file : name, report, finding);
      if (text.size() >= PIECE) {
        writeOutput(text);
        text.clear();
      }
    }
    writeOutput(text);
  }

  void end() override {
    if (style_.quiet || files().read == 0) {
      return;
    }
    writeOutput(toText(counts()) + '\n');
    if (style_.source && counts().all() != 0) {
      writeOutput("For more about a code, try: nimbrel-config check --explain " +
                  std::string(codes().front().kind->name) + '\n');
    }
  }

 private:
  void append(std::string& text, const std::string& file, const check::Report& report,
              const check::Diagnostic& finding) const {
    const check::CodeDescription& kind = check::descriptionOf(finding.code);
    const check::Position place = report.placeOf(finding).begin;
    text.append(with(BOLD)).append(file);
    if (place.line != 0) {
      text += ':' + std::to_string(place.line);
      text += place.column == 0 ? "" : ':' + std::to_string(place.column);
    }
    text.append(with(PLAIN)).append(": ").append(with(colourOf(kind.level)));
    text.append(check::levelName(kind.level)).append(with(PLAIN));
    text += ": " + sentenceOf(check::wordingOf(finding)) + " [";
    text.append(kind.name).append("]\n");
    if (style_.source) {
      text +=
          excerpt(report, finding, {width_, with(FAINT), with(colourOf(kind.level)), with(PLAIN)});
    }
  }

  /// The control sequence, if colours are wanted.
  [[nodiscard]] const char* with(const char* sequence) const noexcept {
    return style_.colour ? sequence : "";
  }

  FindingStyle style_;
  std::size_t width_ = DEFAULT_WIDTH;  // of excerpts
};

class SummaryPrinter : public FindingPrinter {
 protected:
  void printDocument(const CheckedDocument& /*document*/) override {}

  void end() override {
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

std::unique_ptr<FindingPrinter> makeTextPrinter(const FindingStyle& style) {
  if (style.summary) {
    return std::make_unique<SummaryPrinter>();
  }
  return std::make_unique<TextPrinter>(style);
}

}  // namespace orvane::nimbrel::tools
