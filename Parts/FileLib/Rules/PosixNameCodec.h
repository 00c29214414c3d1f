// Reversible translation between POSIX paths, which are bytes, and the text form of paths that the
// file library speaks on every system: UTF-16, volume "C:\" for "/", components parted by "\".
//
// Each component is translated by itself. Well-formed UTF-8 becomes UTF-16; a byte that the text
// form cannot hold (no UTF-8, a character that the name rules forbid, a last blank or ".", the
// first byte of a reserved name, anything that would read as an escape) becomes U+F000 plus the
// byte. So every path that POSIX allows comes back byte for byte, and each component of up to 255
// bytes passes IsValidFileName.
#pragma once

#include <string>

namespace NSFileLibInternals {

/// One component, without "/". An empty component gives an empty text; on the way back so does a
/// text that would hold "/" or a zero byte.
std::u16string NativeNameFromPosix(const std::string& name);
std::string PosixNameFromNative(const std::u16string& name);

/// An absolute path; repeated "/" collapse, a last "/" becomes a last "\". A path that does not
/// begin with "/" is taken as if it did.
std::u16string NativeFromPosix(const std::string& path);

/// A path on volume C. The letter is taken in either case. Another volume, a share or a text that
/// is not a path gives an empty result, which names nothing.
std::string PosixFromNative(const std::u16string& path);

} // namespace NSFileLibInternals
