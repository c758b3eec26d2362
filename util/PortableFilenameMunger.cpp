#include "util/PortableFilenameMunger.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "util/Ascii.h"
#include "util/NameEscape.h"

namespace orvane::zel::util {
namespace {

bool mayStay(std::string_view name, std::size_t index) noexcept {
  const std::size_t last = name.size() - 1;
  switch (name[index]) {
    case '_':
    case '~':
      return true;
    case '-':
      return index != 0;
    case '.':
      return index != 0 && index != last;
    case '%':
      return internal::escapedByte(name, index) >= 0;
    default:
      return nimbrel::util::ascii::isLetterOrDigit(name[index]);
  }
}

}  // namespace

PortableFilenameMunger::PortableFilenameMunger() = default;
PortableFilenameMunger::~PortableFilenameMunger() = default;

void PortableFilenameMunger::munge(std::string& name) {
  std::string safe;
  for (std::size_t i = 0; i < name.size() && safe.size() <= internal::MAX_NAME_BYTES; ++i) {
    if (mayStay(name, i)) {
      safe += name[i];
    } else {
      internal::appendEscape(safe, '=', name[i]);
    }
  }
  if (safe.size() > internal::MAX_NAME_BYTES) {
    safe = internal::longName(safe, "=%", "==", name);
  }
  name = std::move(safe);
}

}  // namespace orvane::zel::util
