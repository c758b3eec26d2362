#pragma once

/// Marks a declaration as part of the interface of `libnimbrelconfig`.
///
/// The libraries are compiled with hidden visibility: what is not marked so does not leave
/// the shared object.
#define NIMBREL_CONFIG_API __attribute__((visibility("default")))
