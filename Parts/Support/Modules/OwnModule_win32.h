#pragma once

#include <windows.h>

namespace NSSupport {

/// The module that holds this code.
inline HMODULE FindOwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&FindOwnModule), &module);
    return module;
}

} // namespace NSSupport
