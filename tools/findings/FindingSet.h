#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "config/ParseObserver.h"
#include "tools/findings/Check.h"

namespace orvane::nimbrel::tools {

/// Merges the findings of several parses of one document, each for another user.
class FindingSet : public config::ParseObserver {
 public:
  void onFinding(const config::Finding& /*finding*/) override {}
  void notice(const config::LegacyFinding& finding) override;
  /// The same for one that has texts of its own.
  void add(CheckedFinding finding);
  /// Whether the parse at hand has a finding that ends it.
  [[nodiscard]] bool hasError() const;
  /// Ends the findings of one parse, which the document may have been refused by.
  void endRun(bool refused);

  /// The findings by line, each once; notes, and what becomes of an element for its language, only
  /// when every parse has them.
  [[nodiscard]] std::vector<CheckedFinding> take();

 private:
  struct Less {
    bool operator()(const CheckedFinding& left, const CheckedFinding& right) const;
  };
  struct Occurrence {
    std::size_t place = 0;  // by first appearance
    std::size_t runs = 0;
    std::size_t completeRuns = 0;
  };

  [[nodiscard]] bool isKept(config::LegacyCode code, const Occurrence& occurrence) const;

  std::vector<CheckedFinding> current_;
  std::map<CheckedFinding, Occurrence, Less> merged_;
  std::size_t runs_ = 0;
  std::size_t completeRuns_ = 0;
};

}  // namespace orvane::nimbrel::tools
