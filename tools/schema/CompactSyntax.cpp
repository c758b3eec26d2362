#include <string_view>

#include "tools/schema/Pattern.h"

namespace orvane::nimbrel::tools {
namespace {

using Kind = Pattern::Kind;

constexpr std::size_t WIDTH = 100;

std::string quote(std::string_view text) {
  return '"' + std::string(text) + '"';
}

/// A pattern from column `indent` on: in one line if it fits, else in a line for each part.
std::string write(const Pattern& pattern, std::size_t indent, bool inOneLine = false);

/// What stands between the parts of a pattern.
char separatorOf(const Pattern& pattern) {
  switch (pattern.kind) {
    case Kind::CHOICE:
      return '|';
    case Kind::INTERLEAVE:
      return '&';
    default:
      return ',';
  }
}

/// Parts in one line, or in a line for each.
std::string join(const std::vector<std::string>& parts, char separator, std::size_t indent,
                 bool inOneLine) {
  const std::string space = inOneLine ? " " : '\n' + std::string(indent, ' ');
  std::string all;
  for (const std::string& part : parts) {
    if (!all.empty()) {
      all += separator == ',' ? ',' + space : space + separator + ' ';
    }
    all += part;
  }
  return all;
}

/// What stands between brackets.
std::string bracketed(const std::string& start, const std::vector<std::string>& parts,
                      char separator, const std::string& end, std::size_t indent, bool inOneLine) {
  const std::string space = inOneLine ? (start == "(" ? "" : " ") : '\n' + std::string(indent, ' ');
  return start + space + (inOneLine || space.empty() ? "" : "  ") +
         join(parts, separator, indent + 2, inOneLine) + space + end;
}

std::string except(const std::vector<std::string>& excepted, std::size_t indent, bool inOneLine) {
  return excepted.empty() ? std::string()
                          : " - " + bracketed("(", excepted, '|', ")", indent, inOneLine);
}

/// The parts of a pattern; those of a choice or group that stands alone in it.
std::vector<std::string> partsOf(const Pattern& pattern, std::size_t indent, bool inOneLine) {
  std::vector<std::string> parts;
  for (const Pattern& part : pattern.parts) {
    parts.push_back(write(part, indent, inOneLine));
  }
  return parts;
}

std::string sequence(const std::string& start, const Pattern& pattern, const std::string& end,
                     std::size_t indent, bool inOneLine) {
  const bool isNested = pattern.parts.size() == 1 && separatorOf(pattern.parts.front()) != ',';
  const Pattern& inner = isNested ? pattern.parts.front() : pattern;
  return bracketed(start, partsOf(inner, indent + 2, inOneLine), separatorOf(inner), end, indent,
                   inOneLine);
}

std::string data(const Pattern& pattern, std::size_t indent, bool inOneLine) {
  std::vector<std::string> values;
  for (const std::string& value : pattern.excepted) {
    values.push_back(quote(value));
  }
  return "xsd:" + pattern.name +
         (pattern.expression.empty() ? "" : " { pattern = " + quote(pattern.expression) + " }") +
         except(values, indent, inOneLine);
}

std::string writeAs(const Pattern& pattern, std::size_t indent, bool inOneLine) {
  switch (pattern.kind) {
    case Kind::ELEMENT:
    case Kind::ATTRIBUTE:
      return sequence((pattern.kind == Kind::ELEMENT ? "element " : "attribute ") + pattern.name +
                          except(pattern.excepted, indent, inOneLine) + " {",
                      pattern, "}", indent, inOneLine);
    case Kind::GROUP:
    case Kind::INTERLEAVE:
    case Kind::CHOICE:
      return sequence("(", pattern, ")", indent, inOneLine);
    case Kind::OPTIONAL:
      return write(pattern.parts.front(), indent, inOneLine) + '?';
    case Kind::REPEATED:
      return write(pattern.parts.front(), indent, inOneLine) + '*';
    case Kind::TEXT:
      return "text";
    case Kind::DATA:
      return data(pattern, indent, inOneLine);
    case Kind::VALUE:
      return quote(pattern.name);
    case Kind::REFERENCE:
      return pattern.name;
  }
  return {};
}

std::string write(const Pattern& pattern, std::size_t indent, bool inOneLine) {
  const std::string line = writeAs(pattern, indent, true);
  return inOneLine || indent + line.size() <= WIDTH ? line : writeAs(pattern, indent, false);
}

/// The same without the brackets of a choice or interleave.
std::string writeDefinition(const Pattern& pattern) {
  const char separator = separatorOf(pattern);
  return separator == ',' ? write(pattern, 2)
                          : join(partsOf(pattern, 2, false), separator, 2, separator == '|');
}

}  // namespace

std::string toCompactSyntax(const std::vector<Definition>& grammar) {
  std::string text;
  for (const std::string& each : introduction()) {
    text += "# " + each + '\n';
  }
  text += "\ndefault namespace = " + quote(namespaces().front().second) + '\n';
  for (const auto& [prefix, space] : namespaces()) {
    text += "namespace " + prefix + " = " + quote(space) + '\n';
  }
  text += "datatypes xsd = \"http://www.w3.org/2001/XMLSchema-datatypes\"\n\nstart = " +
          grammar.front().name + '\n';
  for (const Definition& definition : grammar) {
    text += '\n' + definition.name + " =\n  " + writeDefinition(definition.pattern) + '\n';
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
