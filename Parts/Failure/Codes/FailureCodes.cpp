#include "Failure/Codes/FailureCodes.h"

#include <array>

namespace NSLichen {

namespace {

struct SFailureCodeName {
    char fName[50]; // no pointer, which every load would relocate
    int32_t fCode;
};

constexpr std::array<SFailureCodeName, kFailureCodeCount> kFailureCodeNames{{
    {"kFailureCode_UndefinedException", kFailureCode_UndefinedException},
    {"kFailureCode_NonLichenException", kFailureCode_NonLichenException},
    {"kFailureCode_Exception", kFailureCode_Exception},
    {"kFailureCode_TunneledError", kFailureCode_TunneledError},
    {"kFailureCode_LogicError", kFailureCode_LogicError},
    {"kFailureCode_LogicError_Domain", kFailureCode_LogicError_Domain},
    {"kFailureCode_LogicError_InvalidArgument", kFailureCode_LogicError_InvalidArgument},
    {"kFailureCode_LogicError_Length", kFailureCode_LogicError_Length},
    {"kFailureCode_LogicError_OutOfRange", kFailureCode_LogicError_OutOfRange},
    {"kFailureCode_LogicError_IllegalCallSequence", kFailureCode_LogicError_IllegalCallSequence},
    {"kFailureCode_LogicError_InvariantCorrupt", kFailureCode_LogicError_InvariantCorrupt},
    {"kFailureCode_BadAlloc", kFailureCode_BadAlloc},
    {"kFailureCode_RuntimeError", kFailureCode_RuntimeError},
    {"kFailureCode_RuntimeError_Overflow", kFailureCode_RuntimeError_Overflow},
    {"kFailureCode_RuntimeError_Underflow", kFailureCode_RuntimeError_Underflow},
    {"kFailureCode_RuntimeError_RangeError", kFailureCode_RuntimeError_RangeError},
    {"kFailureCode_RuntimeError_UnsupportedFormat", kFailureCode_RuntimeError_UnsupportedFormat},
    {"kFailureCode_RuntimeError_FormatViolation", kFailureCode_RuntimeError_FormatViolation},
    {"kFailureCode_RuntimeError_VersionTooOld", kFailureCode_RuntimeError_VersionTooOld},
    {"kFailureCode_RuntimeError_VersionTooNew", kFailureCode_RuntimeError_VersionTooNew},
    {"kFailureCode_RuntimeError_ReadFailure", kFailureCode_RuntimeError_ReadFailure},
    {"kFailureCode_RuntimeError_WriteFailure", kFailureCode_RuntimeError_WriteFailure},
    {"kFailureCode_RuntimeError_OutOfSpace", kFailureCode_RuntimeError_OutOfSpace},
    {"kFailureCode_RuntimeError_OutOfItems", kFailureCode_RuntimeError_OutOfItems},
    {"kFailureCode_RuntimeError_Create", kFailureCode_RuntimeError_Create},
    {"kFailureCode_RuntimeError_Open", kFailureCode_RuntimeError_Open},
    {"kFailureCode_RuntimeError_Close", kFailureCode_RuntimeError_Close},
    {"kFailureCode_RuntimeError_Delete", kFailureCode_RuntimeError_Delete},
    {"kFailureCode_RuntimeError_ResolveFailure", kFailureCode_RuntimeError_ResolveFailure},
    {"kFailureCode_RuntimeError_NotFound", kFailureCode_RuntimeError_NotFound},
    {"kFailureCode_RuntimeError_AlreadyExists", kFailureCode_RuntimeError_AlreadyExists},
    {"kFailureCode_RuntimeError_Permission", kFailureCode_RuntimeError_Permission},
    {"kFailureCode_RuntimeError_Locked", kFailureCode_RuntimeError_Locked},
    {"kFailureCode_RuntimeError_ReadOnly", kFailureCode_RuntimeError_ReadOnly},
    {"kFailureCode_RuntimeError_NotReady", kFailureCode_RuntimeError_NotReady},
    {"kFailureCode_RuntimeError_Timeout", kFailureCode_RuntimeError_Timeout},
    {"kFailureCode_RuntimeError_Abort", kFailureCode_RuntimeError_Abort},
    {"kFailureCode_RuntimeError_SilentAbort", kFailureCode_RuntimeError_SilentAbort},
    {"kFailureCode_UnitTestFailure", kFailureCode_UnitTestFailure},
}};

} // namespace

CFixedName GetFailureCodeName(int32_t code) {
    for (const SFailureCodeName& entry : kFailureCodeNames) {
        if (entry.fCode == code) {
            return CFixedName(entry.fName);
        }
    }
    return CFixedName();
}

bool FindFailureCodeByName(const CFixedName& name, int32_t& code) {
    for (const SFailureCodeName& entry : kFailureCodeNames) {
        if (name == CFixedName(entry.fName)) {
            code = entry.fCode;
            return true;
        }
    }
    return false;
}

} // namespace NSLichen
