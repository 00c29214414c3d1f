#pragma once

#include <cstdint>

#include "Failure/Chain/CFixedName.h"

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

/// The static counter. Each compilation unit that raises failures holds one use, so that the module
/// object is there before the first static initialiser that could raise and goes after the last
/// static destructor.
class CFailureModuleUse {
public:
    CFailureModuleUse() noexcept;
    ~CFailureModuleUse();
    CFailureModuleUse(const CFailureModuleUse&) = delete;
    CFailureModuleUse& operator=(const CFailureModuleUse&) = delete;

    static int32_t GetCount() noexcept;
};

static const CFailureModuleUse kFailureModuleUse;

} // namespace NSLichen
