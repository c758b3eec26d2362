#include "tools/output/TextReport.h"

#include <algorithm>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_LABEL_WIDTH = 42;  // a longer label pushes its own value aside only

constexpr char LABEL[] = "\x1b[36m";

// In quotes where its ends could not be seen otherwise.
std::string valueOf(std::string_view text) {
  const bool visible = !text.empty() && text.front() != ' ' && text.back() != ' ';
  return visible ? escape(text) : '"' + escape(text) + '"';
}

}  // namespace

void TextReport::print(bool colour, const Describe& describe) {
  TextReport report(colour);
  describe(report);
  report.isPrinting_ = true;
  report.sections_ = 0;
  describe(report);
  writeOutput(report.pending_);
}

void TextReport::section(std::string_view title) {
  isIndented_ = sections_ == 0 ? !title.empty() : isIndented_;
  ++sections_;
  title_ = title;
  if (!isPrinting_) {
    widths_.push_back(0);
  }
}

void TextReport::row(std::string_view label, std::string_view value, std::string_view note) {
  if (beginRow(escape(label))) {
    pending_ += valueOf(value);
    endRow(note);
  }
}

void TextReport::lines(std::string_view label, std::string_view text, std::string_view note) {
  if (!beginRow(escape(label))) {
    return;
  }
  std::size_t end = text.find('\n');
  pending_ += text.empty() ? valueOf(text) : escape(text.substr(0, end));
  while (end != std::string_view::npos) {
    text.remove_prefix(end + 1);
    end = text.find('\n');
    (pending_ += '\n').append((isIndented_ ? 2 : 0) + widths_[sections_ - 1] + 2, ' ');
    pending_ += escape(text.substr(0, end));
    writeLarge();
  }
  endRow(note);
}

bool TextReport::beginRow(const std::string& label) {
  if (sections_ == 0) {
    section({});
  }
  const std::size_t ownWidth = width(label);
  std::size_t& labelWidth = widths_[sections_ - 1];
  if (!isPrinting_) {
    labelWidth = std::max(labelWidth, std::min(ownWidth, MAXIMUM_LABEL_WIDTH));
    return false;
  }
  if (!title_.empty()) {
    pending_ += isFirst_ ? "" : "\n";
    pending_ += (colour_ ? BOLD + title_ + PLAIN : title_) + '\n';
    title_.clear();
  }
  isFirst_ = false;
  pending_ += isIndented_ ? "  " : "";
  pending_ += colour_ ? LABEL + label + PLAIN : label;
  pending_.append(std::max(labelWidth, ownWidth) - ownWidth + 2, ' ');
  return true;
}

void TextReport::writeLarge() {
  if (pending_.size() >= PIECE) {
    writeOutput(pending_);
    pending_.clear();
  }
}

void TextReport::endRow(std::string_view note) {
  if (!note.empty()) {
    pending_ += colour_ ? std::string("  ") + FAINT + escape(note) + PLAIN : "  " + escape(note);
  }
  pending_ += '\n';
  writeLarge();
}

}  // namespace orvane::nimbrel::tools
