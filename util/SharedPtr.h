#pragma once

#include <memory>

#ifndef NIMBREL_NO_TR1_NAMES
// Hosts written for the first C++ technical report say std::tr1::shared_ptr. The names below are
// the standard ones, no copies, so that both spellings mix freely. The header <tr1/memory> that
// lies beside ours gives the same ones. A program that needs the compiler's own <tr1/memory>
// defines NIMBREL_NO_TR1_NAMES everywhere.
namespace std {  // NOLINT(cert-dcl58-cpp): old names for a host's sources, as said above.
namespace tr1 {  // NOLINT(cert-dcl58-cpp)
// NOLINTBEGIN(misc-unused-using-decls): they are there for those who include this.
using std::bad_weak_ptr;
using std::const_pointer_cast;
using std::dynamic_pointer_cast;
using std::enable_shared_from_this;
using std::get_deleter;
using std::make_shared;
using std::shared_ptr;
using std::static_pointer_cast;
using std::swap;
using std::weak_ptr;
// NOLINTEND(misc-unused-using-decls)
}  // namespace tr1
}  // namespace std
#endif
