#pragma once

#include "config/Api.h"
#include "config/Finding.h"

namespace orvane::nimbrel::config {

/// Receives every decision of a parse that ignores or replaces something, as it is made, so that
/// the author of a document learns why a value did not arrive. Give one to
/// `NimbrelConfigParser::setObserver`.
///
/// An observer changes nothing: record, error text and log lines are the same with and without one.
/// It is called on the thread of the parse.
class NIMBREL_CONFIG_API ParseObserver {
 public:
  virtual ~ParseObserver();

  /// One decision, in the order of the walk. What it throws ends the parse. It must not use the
  /// parser.
  virtual void onFinding(const Finding& finding) = 0;

 protected:
  ParseObserver() = default;
  ParseObserver(const ParseObserver&) = default;
  ParseObserver& operator=(const ParseObserver&) = default;
};

}  // namespace orvane::nimbrel::config
