#pragma once

#include "Failure/Chain/CFixedName.h"

#include <cstdint>

namespace NSLichen {

/// A table of object type words beside the fixed ones. Borrowed: it must live as long as the
/// module.
struct SCustomObjectTypes {
    const CFixedName* fTypes = nullptr;
    uint32_t fCount = 0;
};

/// Written during start, read without a lock.
void SetCustomObjectTypes(const CFixedName* types, uint32_t count);
SCustomObjectTypes GetCustomObjectTypes();

/// The framework's module object. It installs the words of this library at the start and takes them
/// and the debugger pointer away at the end.
class CFailureModule {
public:
    CFailureModule() noexcept;
    ~CFailureModule();
    CFailureModule(const CFailureModule&) = delete;
    CFailureModule& operator=(const CFailureModule&) = delete;
};

/// The static counter. The framework itself holds the first use, from before all other static
/// initialisers to behind all other static destructors, so that these may raise; who holds another
/// keeps the module object alive beyond that.
class CFailureModuleUse {
public:
    CFailureModuleUse() noexcept;
    ~CFailureModuleUse();
    CFailureModuleUse(const CFailureModuleUse&) = delete;
    CFailureModuleUse& operator=(const CFailureModuleUse&) = delete;

    static int32_t GetCount() noexcept;
};

} // namespace NSLichen
