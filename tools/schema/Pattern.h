#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orvane::nimbrel::tools {

/// A part of a RELAX NG grammar, as both of its syntaxes have it.
///
/// Names of elements without a prefix are in the namespace of W3C Widgets, those of attributes in
/// none. The name "*" stands for any; "PREFIX:*" among what it leaves out for a whole namespace.
struct Pattern {
  enum class Kind {
    ELEMENT,     ///< `name`, with the `parts` in order
    ATTRIBUTE,   ///< `name`, with one part
    GROUP,       ///< the parts in order
    INTERLEAVE,  ///< the parts in any order, which for attributes means the same
    CHOICE,      ///< one of the parts
    OPTIONAL,    ///< the one part or nothing
    REPEATED,    ///< the one part, any number of times
    TEXT,        ///< any text
    DATA,        ///< the datatype `name` of XML Schema, restricted to `expression`
    VALUE,       ///< the word `name`, between white space
    REFERENCE    ///< the definition called `name`
  };

  Kind kind;
  std::string name = {};
  std::vector<Pattern> parts = {};
  std::vector<std::string> excepted = {};  ///< names, or values of a datatype
  std::string expression = {};             ///< a regular expression of XML Schema; may be empty
};

/// A pattern with a name.
struct Definition {
  std::string name;
  Pattern pattern;
};

/// The grammar of configuration documents, made of the descriptions by which the parser reads them.
/// The first definition is that of the root.
[[nodiscard]] std::vector<Definition> grammar();

/// The prefixes in a grammar with their namespaces; empty for none.
[[nodiscard]] const std::vector<std::pair<std::string, std::string>>& namespaces();

/// What stands at the beginning of a schema, a line each.
[[nodiscard]] const std::vector<std::string>& introduction();

/// A grammar in the XML syntax, and in the compact one.
[[nodiscard]] std::string toXmlSyntax(const std::vector<Definition>& grammar);
[[nodiscard]] std::string toCompactSyntax(const std::vector<Definition>& grammar);

}  // namespace orvane::nimbrel::tools
