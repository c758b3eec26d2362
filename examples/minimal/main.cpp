#include <exception>
#include <iostream>

#include "config/ConfigParserFactory.h"

int main(int argc, char** argv) {
  try {
    const auto parser = orvane::nimbrel::config::createConfigParser({"de", "en"});
    const auto record = parser->parse(argc > 1 ? argv[1] : "config.xml", nullptr);
    std::cout << (record->getName() ? record->getName().get().c_str() : "unnamed") << '\n'
              << "starts with "
              << (record->getStartFile() ? record->getStartFile().get().src : "nothing") << ", has "
              << record->getIcons().size() << " icons\n";
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
