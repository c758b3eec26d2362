#pragma once

namespace orvane::nimbrel::util::internal {

/// A place in a document, counted from 1; zeros when it is not known.
struct XmlPosition {
  unsigned int line = 0;
  unsigned int column = 0;
};

}  // namespace orvane::nimbrel::util::internal
