// Well-known folders. All paths end in "\"; failures are XNotFound.
#pragma once

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

std::u16string WinGetTempPath();
std::u16string WinGetWindowsPath();

/// number: one of kSpecialFolder_, or another of the platform's.
std::u16string WinGetSpecialFolderPath(int32_t number);

/// The maker's and the product's folder below a special folder, created when missing. An empty text
/// stands for no folder of its own.
std::u16string WinGetProductFolderPath(int32_t number, const std::u16string& maker,
                                       const std::u16string& product);
std::u16string WinGetAppDataPathImpl(const std::u16string& maker, const std::u16string& product,
                                     bool allUsers);

/// Of the running program.
std::u16string WinGetExecutablePath();

} // namespace NSFileLibInternals
