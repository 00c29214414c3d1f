#include "Debug/Dump/MiniDump.h"

namespace NSDebugPackage {

EDumpResult WriteProcessDump(const std::u16string& /*path*/, void* /*fault*/) {
    return EDumpResult::kFailed;
}

} // namespace NSDebugPackage
