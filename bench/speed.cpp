// How long each contestant takes for each document. Names are "shape/size/contestant".

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "bench/Contestants.h"
#include "bench/Documents.h"

namespace {

using namespace orvane::nimbrel::bench;

constexpr std::size_t SIZES[] = {100, 1'000, 10'000, 100'000};

void measure(benchmark::State& state, const std::string& document,
             const std::vector<std::string>& locales, const Contestant& contestant) {
  const auto read = contestant.prepare(locales);
  for ([[maybe_unused]] const auto iteration : state) {
    benchmark::DoNotOptimize(read(document));
  }
  state.counters["bytes"] = static_cast<double>(document.size());
}

void add(const Shape& shape, std::size_t size) {
  const auto document = std::make_shared<const std::string>(shape.make(size));
  for (const Contestant& contestant : contestants()) {
    if (std::string(contestant.name) == "hand" && size > shape.handWrittenLimit) {
      continue;
    }
    const std::string name =
        std::string(shape.name) + "/" + std::to_string(size) + "/" + contestant.name;
    benchmark::RegisterBenchmark(name.c_str(), [document, &shape,
                                                &contestant](benchmark::State& state) {
      measure(state, *document, localesFor(shape), contestant);
    })->Unit(benchmark::kMicrosecond);
  }
}

}  // namespace

int main(int count, char** arguments) {
  for (const Shape& shape : shapes()) {
    if (shape.grows) {
      for (const std::size_t size : SIZES) {
        add(shape, size);
      }
    } else {
      add(shape, 0);
    }
  }
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
