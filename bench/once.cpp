// Reads one document some times, for a profiler or `time`:
//   once SHAPE SIZE CONTESTANT TIMES
//   once SHAPE SIZE print

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "bench/Contestants.h"
#include "bench/Documents.h"

int main(int count, char** arguments) {
  using namespace orvane::nimbrel::bench;

  const Shape* const shape = count < 4 ? nullptr : findShape(arguments[1]);
  if (shape == nullptr) {
    std::fprintf(stderr, "usage: once SHAPE SIZE CONTESTANT TIMES | once SHAPE SIZE print\n");
    return 2;
  }
  const std::string document = shape->make(std::strtoul(arguments[2], nullptr, 10));
  const std::string name = arguments[3];
  if (name == "print") {
    std::fwrite(document.data(), 1, document.size(), stdout);
    return 0;
  }
  const Contestant* const contestant = findContestant(name);
  if (contestant == nullptr || count < 5) {
    std::fprintf(stderr, "no such contestant, or no number of times\n");
    return 2;
  }
  try {
    const auto read = contestant->prepare(localesFor(*shape));
    for (unsigned long times = std::strtoul(arguments[4], nullptr, 10); times > 0; --times) {
      static_cast<void>(read(document));
    }
  } catch (const std::exception& rejection) {
    std::fprintf(stderr, "%s\n", rejection.what());
    return 1;
  }
  return 0;
}
