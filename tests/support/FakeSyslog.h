#pragma once

#include <string>
#include <vector>

namespace orvane::nimbrel::test {

/// What went to syslog: lines as "priority text", and the formats that they came from.
struct LogLines {
  std::vector<std::string> lines, formats;
};

/// Of this program, which links `FakeSyslog.cpp`: that takes the lines and is the host "the.host".
LogLines& logged();

}  // namespace orvane::nimbrel::test
