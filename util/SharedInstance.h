#pragma once

#include <memory>
#include <new>

namespace orvane::nimbrel::util::internal {

/// The one object of a class without state, which all callers share. It takes no allocation, and is
/// never destroyed: static objects of a host may use it until the process ends. Any thread may make
/// the first call.
template <typename Service>
[[nodiscard]] std::shared_ptr<Service> sharedInstance() noexcept {
  alignas(Service) static unsigned char room[sizeof(Service)];
  static Service* const service = ::new (static_cast<void*>(room)) Service;
  return {std::shared_ptr<void>(), service};  // there are no references to count
}

}  // namespace orvane::nimbrel::util::internal
