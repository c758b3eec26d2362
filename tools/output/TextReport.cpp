#include "tools/output/TextReport.h"

#include <algorithm>
#include <utility>

#include "tools/output/Columns.h"
#include "tools/output/Escape.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_LABEL_WIDTH = 42;  // a longer label pushes its own value aside only

constexpr char BOLD[] = "\x1b[1m";
constexpr char LABEL[] = "\x1b[36m";
constexpr char NOTE[] = "\x1b[2m";
constexpr char PLAIN[] = "\x1b[0m";

// In quotes where its ends could not be seen otherwise.
std::string valueOf(std::string_view text) {
  const bool visible = !text.empty() && text.front() != ' ' && text.back() != ' ';
  return visible ? escape(text) : '"' + escape(text) + '"';
}

}  // namespace

void TextReport::section(std::string_view title) {
  sections_.push_back({std::string(title), {}});
}

void TextReport::row(std::string_view label, std::string_view value, std::string_view note) {
  add({escape(label), {valueOf(value)}, escape(note)});
}

void TextReport::lines(std::string_view label, std::string_view text, std::string_view note) {
  std::vector<std::string> values;
  for (const std::string& line : zel::util::StringUtil::split(std::string(text), '\n')) {
    values.push_back(escape(line));
  }
  if (values.empty()) {
    values.push_back(valueOf({}));
  }
  add({escape(label), std::move(values), escape(note)});
}

void TextReport::detail(std::string_view label, std::string_view value, std::string_view note) {
  add({"  " + escape(label), {valueOf(value)}, escape(note)});
}

void TextReport::add(Row row) {
  if (sections_.empty()) {
    section({});
  }
  sections_.back().rows.push_back(std::move(row));
}

std::string TextReport::finish() const {
  std::string out;
  for (const Section& section : sections_) {
    if (section.rows.empty()) {
      continue;
    }
    if (!section.title.empty()) {
      out += out.empty() ? "" : "\n";
      out += colour_ ? BOLD + section.title + PLAIN : section.title;
      out += '\n';
    }
    std::size_t labelWidth = 0;
    for (const Row& row : section.rows) {
      labelWidth = std::max(labelWidth, std::min(width(row.label), MAXIMUM_LABEL_WIDTH));
    }
    for (const Row& row : section.rows) {
      print(row, labelWidth, out);
    }
  }
  return out;
}

void TextReport::print(const Row& row, std::size_t labelWidth, std::string& out) const {
  const char* indent = sections_.front().title.empty() ? "" : "  ";
  const std::size_t ownWidth = width(row.label);
  out += indent;
  out += colour_ ? LABEL + row.label + PLAIN : row.label;
  out.append(std::max(labelWidth, ownWidth) - ownWidth + 2, ' ');
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    if (i != 0) {
      out += '\n' + std::string(indent) + std::string(labelWidth + 2, ' ');
    }
    out += row.values[i];
  }
  if (!row.note.empty()) {
    out += colour_ ? std::string("  ") + NOTE + row.note + PLAIN : "  " + row.note;
  }
  out += '\n';
}

}  // namespace orvane::nimbrel::tools
