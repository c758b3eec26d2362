#include <algorithm>
#include <string>

#include "tools/findings/Excerpt.h"
#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Level;

constexpr std::size_t DEFAULT_WIDTH = 100;
constexpr std::size_t LEAST_WIDTH = 40;
constexpr std::size_t FRAME = 14;  // of an excerpt: the gutter, and the marks of a cut

const char* colourOf(Level level) noexcept {
  return level == Level::ERROR     ? "\x1b[1;31m"
         : level == Level::WARNING ? "\x1b[1;33m"
                                   : "\x1b[1;36m";
}

class TextPrinter : public FindingPrinter {
 public:
  explicit TextPrinter(const FindingStyle& style) : style_(style) {
    if (style.terminal != 0) {
      width_ = std::clamp(style.terminal - std::min(style.terminal, FRAME), LEAST_WIDTH, width_);
    }
  }

  void finish() override {
    if (style_.quiet || files().read == 0) {
      return;
    }
    writeOutput(counts().text() + '\n');
    if (style_.source && counts().all() != 0) {
      writeOutput("For more about a code, try: nimbrel-config check --explain " +
                  std::string(codes().front().kind->name) + '\n');
    }
  }

 protected:
  void printDocument(const CheckedDocument& document, const FindingCounts& /*counts*/) override {
    const std::string file = escape(document.file);
    const std::string name = escape(document.name);
    std::string text;
    for (const check::Diagnostic& finding : document.report->findings()) {
      append(text, finding.isOfPackage ? file : name, {*document.report, finding});
      if (text.size() >= PIECE) {
        writeOutput(text);
        text.clear();
      }
    }
    writeOutput(text);
  }

 private:
  void append(std::string& text, const std::string& file, const ShownFinding& shown) const {
    const check::Position& place = shown.place.begin;
    const char* const colour = with(colourOf(shown.kind.level));
    text.append(with(BOLD)).append(placed(file, place.line, place.column)).append(with(PLAIN));
    text.append(": ").append(colour).append(check::levelName(shown.kind.level)).append(with(PLAIN));
    text.append(": ").append(sentenceOf(shown.wording)).append(" [");
    text.append(shown.kind.name).append("]\n");
    if (style_.source) {
      text += excerpt(shown.report, shown.finding, {width_, with(FAINT), colour, with(PLAIN)});
    }
  }

  /// The control sequence, if colours are wanted.
  [[nodiscard]] const char* with(const char* sequence) const noexcept {
    return style_.colour ? sequence : "";
  }

  FindingStyle style_;
  std::size_t width_ = DEFAULT_WIDTH;  // of excerpts
};

}  // namespace

std::unique_ptr<FindingPrinter> makeTextPrinter(const FindingStyle& style) {
  return std::make_unique<TextPrinter>(style);
}

}  // namespace orvane::nimbrel::tools
