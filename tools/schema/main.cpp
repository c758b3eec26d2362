// write-schema xml|compact: prints the RELAX NG schema of configuration documents.

#include <iostream>
#include <string_view>

#include "tools/schema/Pattern.h"

int main(int argc, char** argv) {
  using namespace orvane::nimbrel::tools;
  const std::string_view syntax = argc == 2 ? argv[1] : "";
  if (syntax != "xml" && syntax != "compact") {
    std::cerr << "Usage: write-schema xml|compact\n";
    return 2;
  }
  std::cout << (syntax == "xml" ? toXmlSyntax(grammar()) : toCompactSyntax(grammar()))
            << std::flush;
  return std::cout ? 0 : 2;
}
