#pragma once

#include <fstream>
#include <iostream>
#include <set>
#include <string>

namespace orvane::nimbrel::bench {

/// Prints "libraries COUNT resident KILOBYTES": the shared objects that are mapped, the dynamic
/// linker among them, and the memory that the process holds.
inline void printProcessFacts() {
  std::ifstream status("/proc/self/status");
  std::string resident;
  for (std::string word; status >> word;) {
    if (word == "VmRSS:") {
      status >> resident;
    }
  }
  std::ifstream maps("/proc/self/maps");
  std::set<std::string> libraries;
  for (std::string line; std::getline(maps, line);) {
    if (line.find(".so") != std::string::npos) {
      libraries.insert(line.substr(line.find('/')));
    }
  }
  std::cout << "libraries " << libraries.size() << " resident " << resident << '\n';
}

}  // namespace orvane::nimbrel::bench
