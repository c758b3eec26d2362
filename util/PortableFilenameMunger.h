#pragma once

#include <string>

#include "util/Api.h"
#include "util/FilenameMunger.h"

namespace orvane::zel::util {

/// Makes one name, safe as a directory entry, of any bytes; different bytes never share a name.
///
///     "app"             app                 letters, digits, "-._~" and "%XX" stay
///     "host/a b"        host=2Fa=20b        any other byte is "=" and two upper-case hex digits
///     "50%", "a=b"      50=25, a=3Db        so is a "%" that begins no "%XX", and "=" itself
///     ".hidden", "-rf"  =2Ehidden, =2Drf    so is a "." or "-" that comes first
///     "..", "end."      =2E=2E, end=2E      and a "." that comes last
///     300 times "a"     aaa...aaa==9835...  over 255 bytes: a prefix, "==", SHA-256 of the input
///
/// The name is 1 to 255 bytes of ASCII letters, digits and "-._~%=", so it is UTF-8 that no file
/// system normalises; it is not "." or "..", does not begin with "." or "-" and does not end in
/// ".". Only the empty input gives the empty name. Names that other systems reserve ("CON") are not
/// looked at. A name is safe as it stands, not when a "%2F" in it is decoded.
///
/// Why it is injective: a short name is a row of "=XX" groups and of bytes other than "=". Reading
/// it from the left, with every group turned back into its byte and the rest taken as it is, gives
/// the input, so two inputs cannot share it; which bytes were written as a group does not matter. A
/// long name holds "==", which no short name can, as there two hex digits follow each "=". Two long
/// names are equal only if the SHA-256 digests of the inputs are: for inputs whose name would pass
/// 255 bytes, and only for them, the guarantee is that of the digest.
///
/// Letters keep their case, on which the names of two inputs may depend. Where a file system keeps
/// case but ignores it in look-ups, two inputs share an entry exactly when they differ in nothing
/// but the case of ASCII letters: the digits of a group are upper case always. (Inputs with long
/// names share none even then, since their digests differ.)
///
/// An input that is safe already is its own name, however often it is munged. A name that was
/// changed is changed again: no injective rule could promise more.
///
/// Stateless: any number of threads may share one.
class NIMBREL_UTIL_API PortableFilenameMunger : public FilenameMunger {
 public:
  PortableFilenameMunger();
  ~PortableFilenameMunger() override;

  /// Replaces `name`, any bytes, NUL included, by its name. Throws `std::bad_alloc`, and, for a
  /// name over 255 bytes, `std::runtime_error` when GLib cannot be loaded; `name` is then untouched
  /// (strong guarantee).
  void munge(std::string& name) override;
};

}  // namespace orvane::zel::util
