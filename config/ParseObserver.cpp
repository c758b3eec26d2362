#include "config/ParseObserver.h"

namespace orvane::nimbrel::config {

ParseObserver::~ParseObserver() = default;

}  // namespace orvane::nimbrel::config
