#include "util/IRIParser.h"

bool isRight() {
  orvane::nimbrel::util::Option<orvane::nimbrel::util::IRI> iri;
  return orvane::nimbrel::util::IRIParser().tryParse("https://example.org/app", iri) &&
         iri.get().host == "example.org";
}
