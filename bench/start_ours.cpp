// A host that reads one document. What its process costs from its start to the record:
//   bench_start_ours FILE           to be counted
//   bench_start_ours FILE facts     says which libraries and how much memory it took

#include <exception>
#include <iostream>

#include "bench/ProcessFacts.h"
#include "config/ConfigParserFactory.h"

int main(int argc, char** argv) {
  try {
    const auto parser = orvane::nimbrel::config::createConfigParser({"de", "en"});
    const auto record = parser->parse(argc > 1 ? argv[1] : "config.xml", nullptr);
    std::cout << (record->getName() ? record->getName().get().c_str() : "unnamed") << '\n';
    if (argc > 2) {
      orvane::nimbrel::bench::printProcessFacts();
    }
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
