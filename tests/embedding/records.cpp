#include <string>

#include "config/ConfigParserFactory.h"

bool isRight() {
  const std::string document =
      "<widget xmlns='http://www.w3.org/ns/widgets'><name>Hello</name></widget>";
  const auto record = orvane::nimbrel::config::createConfigParser({})->parse(
      document.data(), static_cast<unsigned int>(document.size()), nullptr, nullptr);
  return record->getName().get().c_str() == std::string("Hello");
}
