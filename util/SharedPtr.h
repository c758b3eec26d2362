#pragma once

#include <memory>

#ifndef NIMBREL_NO_TR1_NAMES
// Hosts written for the first C++ technical report spell the shared pointer
// std::tr1::shared_ptr. The name below is the same template, not a copy of it, so both spellings
// mix freely. A program that includes the compiler's own <tr1/memory> defines
// NIMBREL_NO_TR1_NAMES before any header of this library.
namespace std {         // NOLINT(cert-dcl58-cpp): an old name for a host's sources, as said above.
namespace tr1 {         // NOLINT(cert-dcl58-cpp)
using std::shared_ptr;  // NOLINT(misc-unused-using-decls): it is there for those who include this.
}  // namespace tr1
}  // namespace std
#endif
