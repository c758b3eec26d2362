#pragma once

/// Marks a declaration as part of the interface of `libnimbrelutil`.
///
/// The libraries are compiled with hidden visibility: what is not marked so does not leave
/// the shared object.
#define NIMBREL_UTIL_API __attribute__((visibility("default")))
