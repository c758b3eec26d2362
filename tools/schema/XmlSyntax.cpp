#include <string_view>

#include "tools/schema/Pattern.h"

namespace orvane::nimbrel::tools {
namespace {

using Kind = Pattern::Kind;

std::string escapeXml(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

class Writer {
 public:
  void begin(const std::string& tag) {
    line('<' + tag + '>');
    ++depth_;
  }
  void end(const std::string& name) {
    --depth_;
    line("</" + name + '>');
  }
  void line(const std::string& content) { text_.append(2 * depth_, ' ').append(content) += '\n'; }

  void write(const Pattern& pattern) {
    switch (pattern.kind) {
      case Kind::ELEMENT:
      case Kind::ATTRIBUTE:
        return named(pattern);
      case Kind::GROUP:
        return around("group", pattern);
      case Kind::INTERLEAVE:
        return around("interleave", pattern);
      case Kind::CHOICE:
        return around("choice", pattern);
      case Kind::OPTIONAL:
        return around("optional", pattern);
      case Kind::REPEATED:
        return around("zeroOrMore", pattern);
      case Kind::TEXT:
        return line("<text/>");
      case Kind::DATA:
        return data(pattern);
      case Kind::VALUE:
        return line("<value>" + escapeXml(pattern.name) + "</value>");
      case Kind::REFERENCE:
        return line("<ref name=\"" + pattern.name + "\"/>");
    }
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void parts(const Pattern& pattern) {
    for (const Pattern& part : pattern.parts) {
      write(part);
    }
  }

  void around(const std::string& tag, const Pattern& pattern) {
    begin(tag);
    parts(pattern);
    end(tag);
  }

  void named(const Pattern& pattern) {
    const bool isElement = pattern.kind == Kind::ELEMENT;
    const std::string tag = isElement ? "element" : "attribute";
    const bool isAny = pattern.name == "*";
    const std::string start = isAny ? tag : tag + " name=\"" + pattern.name + '"';
    if (!isAny && !isElement && pattern.parts.front().kind == Kind::TEXT) {
      return line('<' + start + "/>");  // text is what it has by default
    }
    begin(start);
    if (isAny) {
      anyName(pattern.excepted, isElement);
    }
    parts(pattern);
    end(tag);
  }

  void anyName(const std::vector<std::string>& excepted, bool isElement) {
    if (excepted.empty()) {
      return line("<anyName/>");
    }
    begin("anyName");
    begin("except");
    for (const std::string& name : excepted) {
      const std::size_t colon = name.find(':');
      if (colon != std::string::npos && name.substr(colon) == ":*") {
        line("<nsName ns=\"" + escapeXml(namespaceOf(name.substr(0, colon))) + "\"/>");
      } else if (isElement || colon != std::string::npos) {
        line("<name>" + name + "</name>");
      } else {
        line("<name ns=\"\">" + name + "</name>");
      }
    }
    end("except");
    end("anyName");
  }

  static const std::string& namespaceOf(const std::string& prefix) {
    for (const auto& each : namespaces()) {
      if (each.first == prefix) {
        return each.second;
      }
    }
    static const std::string NONE;
    return NONE;
  }

  void data(const Pattern& pattern) {
    begin("data type=\"" + pattern.name + '"');
    if (!pattern.expression.empty()) {
      line("<param name=\"pattern\">" + escapeXml(pattern.expression) + "</param>");
    }
    if (!pattern.excepted.empty()) {
      begin("except");
      for (const std::string& value : pattern.excepted) {
        line("<value>" + escapeXml(value) + "</value>");
      }
      end("except");
    }
    end("data");
  }

  std::string text_;
  std::size_t depth_ = 0;
};

}  // namespace

std::string toXmlSyntax(const std::vector<Definition>& grammar) {
  Writer writer;
  writer.line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
  for (const std::string& each : introduction()) {
    writer.line("<!-- " + each + " -->");
  }
  std::string declarations;
  for (const auto& [prefix, space] : namespaces()) {
    if (!space.empty()) {
      declarations += "\n         xmlns:" + prefix + "=\"" + escapeXml(space) + '"';
    }
  }
  writer.begin("grammar xmlns=\"http://relaxng.org/ns/structure/1.0\"\n         ns=\"" +
               escapeXml(namespaces().front().second) + '"' + declarations +
               "\n         datatypeLibrary=\"http://www.w3.org/2001/XMLSchema-datatypes\"");
  writer.line("<start><ref name=\"" + grammar.front().name + "\"/></start>");
  for (const Definition& definition : grammar) {
    writer.begin("define name=\"" + definition.name + '"');
    writer.write(definition.pattern);
    writer.end("define");
  }
  writer.end("grammar");
  return writer.text();
}

}  // namespace orvane::nimbrel::tools
