#pragma once

#include <string>
#include <typeinfo>

namespace orvane::zel::config {

/// What the exception says that `call` throws, if it is exactly an `E`; otherwise what is wrong.
/// Exceptions of unrelated types pass and fail the test.
template <typename E, typename F>
std::string refusal(const F& call) {
  try {
    call();
  } catch (const E& exception) {
    return typeid(exception) == typeid(E) ? exception.what()
                                          : std::string("is a ") + typeid(exception).name();
  }
  return "is no refusal";
}

}  // namespace orvane::zel::config
