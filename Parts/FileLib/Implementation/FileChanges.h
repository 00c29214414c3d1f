// Deleting, moving and creating.
#pragma once

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

void WinDeletePhysicalFile(const std::u16string& path);

/// flags: kMove_WriteThrough, kMove_Replace.
void WinMoveFileEx(const std::u16string& from, const std::u16string& to, uint32_t flags);

/// XCreate when it exists already.
void WinCreatePhysicalDirectory(const std::u16string& path);
/// The folder must be empty.
void WinDeletePhysicalDirectory(const std::u16string& path);

} // namespace NSFileLibInternals
