#include "Failure/Raising/CFailureModule.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Raising/DebuggerAccess.h"

#include <array>
#include <new>

namespace NSLichen {

namespace {

constexpr std::array kModuleObjectTypes{LopFileWord()};

// All constant-initialised: other units' initialisers run through here before this unit's do.
constinit SCustomObjectTypes sCustomObjectTypes;
constinit int32_t sUseCount = 0;
alignas(CFailureModule) constinit unsigned char sModuleStorage[sizeof(CFailureModule)] = {};
constinit CFailureModule* sModule = nullptr;

// One use for the whole library, at the first of the priorities left to programs, ahead of those
// without any. One in every unit that raises would hold no more, and each would cost time in
// loading.
[[gnu::init_priority(101)]] const CFailureModuleUse kFirstUse;

} // namespace

void SetCustomObjectTypes(const CFixedName* types, uint32_t count) {
    sCustomObjectTypes = {types, count};
}

SCustomObjectTypes GetCustomObjectTypes() {
    return sCustomObjectTypes;
}

CFailureModule::CFailureModule() noexcept {
    SetCustomObjectTypes(kModuleObjectTypes.data(),
                         static_cast<uint32_t>(kModuleObjectTypes.size()));
}

CFailureModule::~CFailureModule() {
    SetCustomObjectTypes(nullptr, 0);
    SetDebugger(nullptr);
}

CFailureModuleUse::CFailureModuleUse() noexcept {
    if (++sUseCount == 1) {
        sModule = ::new (static_cast<void*>(sModuleStorage)) CFailureModule();
    }
}

CFailureModuleUse::~CFailureModuleUse() {
    if (--sUseCount == 0) {
        sModule->~CFailureModule();
        sModule = nullptr;
    }
}

int32_t CFailureModuleUse::GetCount() noexcept {
    return sUseCount;
}

} // namespace NSLichen
