// Version records as people read them.
#pragma once

#include "Failure/Raising/IByteReader.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSSupport {

/// A copy of the pattern in which "^" and a digit stands for the argument of that index. A "^" that
/// names no argument stays. What an argument brings is not searched again.
std::string ReplacePlaceholders(const std::string& pattern,
                                const std::vector<std::string>& arguments);

/// "1.2" or, with a bug fix number, "1.2.3"; behind it the stage's letter ("d", "a", "b", "f") and
/// the build number, unless the version is final and has build number 0. With `withBuild` the build
/// number follows such a text once more: "1.2b7 build 7". The default record gives the fallback.
std::string FormatVersion(const NSPorter::SVersionRecord& version, const std::string& fallback,
                          bool withBuild = false);

/// The inverse of FormatVersion for all fields but fExtra; the fallback gives the default record.
/// Any other text raises XFormatViolation with "Bad version string".
NSPorter::SVersionRecord ParseVersion(const std::string& text, const std::string& fallback = "");

/// Reads the 5 bytes of a short version. A wrong first byte raises XFormatViolation with
/// "ReadVersion bad version file magic"; the last byte is dropped. A failure of the reader is
/// raised as the failure that its status stands for.
NSPorter::SVersionRecord ReadShortVersion(NSLichen::IByteReader& reader, int64_t position);

} // namespace NSSupport
