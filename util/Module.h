#pragma once

#include <dlfcn.h>

#include <stdexcept>

namespace orvane::zel::util::internal {

/// The table of functions that a module of ours exports under a name.
///
/// A module links a library that most processes never need, and lies in a private folder of the
/// library that opens it. This function is inline on purpose: the dynamic linker searches the run
/// path of the library that calls `dlopen`. Functions are bound when they are first called, and a
/// module stays until the process ends. Throws `std::runtime_error` with the dynamic linker's
/// words.
template <typename Functions>
const Functions& openModule(const char* file, const char* table) {
  void* const module = dlopen(file, RTLD_LAZY | RTLD_LOCAL);
  const void* const functions = module != nullptr ? dlsym(module, table) : nullptr;
  if (functions == nullptr) {
    const char* const why = dlerror();
    throw std::runtime_error(why != nullptr ? why : file);
  }
  return *static_cast<const Functions*>(functions);
}

}  // namespace orvane::zel::util::internal
