// A program that uses the utility library alone and brings none of the host's symbols.
#include <iostream>
#include <string_view>

#include "util/HostSymbols.h"
#include "util/IRIParser.h"
#include "util/ParseException.h"
#include "util/XmlParserLibXml.h"

namespace util = orvane::nimbrel::util;

int main() {
  util::Option<util::IRI> iri;
  bool good = util::IRIParser().tryParse("https://example.org:8443/a", iri);
  good = good && iri.get().host == "example.org" && iri.get().port == 8443;
  try {
    const auto document = util::XmlParserLibXml().parse("<a>", 3, nullptr, nullptr);
    good = false;
  } catch (const orvane::nimbrel::ParseException& rejection) {
    good = good && rejection.line == 1;
  }
  int status = 0;
  good = good && std::string_view(APP_ID) == "nimbrel" && util::logMask() == 0 &&
         corvel_get_int("screen", "dpi", &status, 7) == 7 && status != 0;
  std::cout << (good ? "plain: ok\n" : "plain: failed\n");
  return good ? 0 : 1;
}
