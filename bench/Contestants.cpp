#include "bench/Contestants.h"

#include <stdexcept>

#include "bench/HandWrittenWalk.h"
#include "config/ConfigParserFactory.h"

namespace orvane::nimbrel::bench {
namespace {

using Read = std::function<Kept(const std::string& document)>;

Read bare(const std::vector<std::string>& /*locales*/) {
  return [](const std::string& document) -> Kept { return readTree(document); };
}

Read hand(const std::vector<std::string>& locales) {
  return [locales](const std::string& document) -> Kept { return readByHand(document, locales); };
}

Read ours(const std::vector<std::string>& locales) {
  return [locales](const std::string& document) -> Kept {
    // A fresh parser each time, as a launcher would make it.
    return config::createConfigParser(locales)->parse(
        document.data(), static_cast<unsigned int>(document.size()), nullptr, nullptr);
  };
}

}  // namespace

const std::vector<Contestant>& contestants() {
  static const std::vector<Contestant> all = {{"bare", bare}, {"hand", hand}, {"ours", ours}};
  return all;
}

const Contestant* findContestant(const std::string& name) {
  for (const Contestant& contestant : contestants()) {
    if (contestant.name == name) {
      return &contestant;
    }
  }
  return nullptr;
}

}  // namespace orvane::nimbrel::bench
