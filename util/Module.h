#pragma once

#include <dlfcn.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace orvane::zel::util::internal {

/// The table of functions that a module of ours exports under a name.
///
/// A module links a library that most processes never need, and lies in a private folder of the
/// library that opens it: `path` is "FOLDER/FILE". This function is inline on purpose: the dynamic
/// linker searches the run path of the library that calls `dlopen`. Functions are bound when they
/// are first called, and a module stays until the process ends. Throws `std::runtime_error` with
/// the dynamic linker's words.
template <typename Functions>
const Functions& openModule(const char* path, const char* table) {
  void* module = dlopen(std::strrchr(path, '/') + 1, RTLD_LAZY | RTLD_LOCAL);
  if (module == nullptr) {  // short of memory, the dynamic linker forgets the run path for good
    module = dlopen((std::string("$ORIGIN/") + path).c_str(), RTLD_LAZY | RTLD_LOCAL);
  }
  const void* const functions = module != nullptr ? dlsym(module, table) : nullptr;
  if (functions == nullptr) {
    const char* const why = dlerror();
    throw std::runtime_error(why != nullptr ? why : path);
  }
  return *static_cast<const Functions*>(functions);
}

}  // namespace orvane::zel::util::internal
