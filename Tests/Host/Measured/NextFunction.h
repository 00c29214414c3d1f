#pragma once

#include <dlfcn.h>

/// The C library's function of a name that the test program defines itself.
template <class Function>
Function NextFunction(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}
