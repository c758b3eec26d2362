#include "config/Config.h"

namespace orvane::nimbrel::config {

Config::~Config() = default;

}  // namespace orvane::nimbrel::config
