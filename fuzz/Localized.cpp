// The localised texts of one element.
//
//     description          the name of the element
//     <widget ...>         the document
//
// Normalising changes texts, never keys. A parser whose user prefers one of the languages finds the
// text that the map has for it.

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "config/ConfigParserFactory.h"
#include "fuzz/Property.h"
#include "util/ParseException.h"
#include "widgetid/LocalizedElementParser.h"

namespace orvane::nimbrel::fuzz {
namespace {

using Texts = std::map<std::string, std::string>;

/// Compares the map of descriptions with what the parser makes of the same document; the parser may
/// reject it for reasons of its own.
void compareWithParser(const std::string& document, const Texts& texts) {
  for (const auto& [language, text] : texts) {
    if (language == "*") {
      continue;  // the tag "*" and the absence of one share this key
    }
    try {
      const auto record = config::createConfigParser({language})
                              ->parse(document.data(), static_cast<unsigned int>(document.size()),
                                      nullptr, nullptr);
      require(static_cast<bool>(record->getDescription()), "a language of the map is found");
      require(record->getDescription().get().c_str() == text, "its text is the same");
    } catch (const config::ConfigParser::ConfigException&) {
      return;
    } catch (const std::invalid_argument&) {
      return;
    } catch (const std::overflow_error&) {
      return;
    }
  }
}

}  // namespace
}  // namespace orvane::nimbrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane;
  using nimbrel::fuzz::require;
  std::string_view rest = nimbrel::fuzz::viewOf(data, size);
  const std::string name = nimbrel::fuzz::cString(nimbrel::fuzz::takeUpTo('\n', rest));
  const std::string document(rest);
  const auto mapOf = [&](bool normalize) {
    return zel::config::LocalizedElementParser::getLocalizedElementMap(
        document.data(), static_cast<unsigned int>(document.size()), name.c_str(), normalize);
  };
  nimbrel::fuzz::Texts texts;
  try {
    texts = mapOf(false);
  } catch (const nimbrel::ParseException&) {
    return 0;
  }
  const nimbrel::fuzz::Texts normalized = mapOf(true);
  require(normalized.size() == texts.size(), "normalising leaves the keys");
  for (const auto& [language, text] : normalized) {
    require(!language.empty(), "no key is empty");
    require(texts.count(language) == 1, "normalising leaves the keys");
    require(text.size() <= texts[language].size(), "normalising adds nothing");
    require(text.find("  ") == std::string::npos, "white space is squeezed");
    require(text.empty() || (text.front() != ' ' && text.back() != ' '), "white space is trimmed");
  }
  if (name == "description" && texts.size() <= 8) {
    nimbrel::fuzz::compareWithParser(document, texts);
  }
  return 0;
}
