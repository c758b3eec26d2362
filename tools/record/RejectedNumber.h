#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "config/NimbrelConfigParser.h"
#include "config/ParseObserver.h"
#include "tools/Failure.h"

namespace orvane::nimbrel::tools {

/// Remembers which element has the number that ends a parse: the exception does not say.
class RejectedNumber : public config::ParseObserver {
 public:
  void onFinding(const config::Finding& finding) override;

  /// The failure with the place, if it is that of a number.
  [[nodiscard]] DocumentFailure complete(const std::string& file,
                                         const DocumentFailure& failure) const;

 private:
  std::uint32_t line_ = 0;
  std::string subject_;
};

/// What `parse` makes with the parser of the document called `file`; as `readingDocument`, but a
/// number that ends the parse is named with its place. Takes the parser's observer.
template <typename Parse>
auto parsingDocument(const std::string& file, config::NimbrelConfigParser& parser, Parse&& parse) {
  const auto number = std::make_shared<RejectedNumber>();
  parser.setObserver(number);
  try {
    return readingDocument(file, std::forward<Parse>(parse));
  } catch (const DocumentFailure& failure) {
    throw number->complete(file, failure);
  }
}

}  // namespace orvane::nimbrel::tools
