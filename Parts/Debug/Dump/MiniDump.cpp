#include "Debug/Dump/MiniDump.h"

#include "Debug/Log/TraceLine.h"
#include "Debug/Symbols/SymbolEngine.h"
#include "Text/UnicodeConversion.h"

namespace NSDebugPackage {

std::string WriteMiniDumpFile(const std::string& folder, const std::string& base, void* fault) {
    return WriteMiniDumpFile(folder, base, fault, NSSupport::UtcToLocal(NSSupport::GetUtcTime()));
}

std::string WriteMiniDumpFile(const std::string& folder, const std::string& base, void* fault,
                              const NSSupport::SCalendarTime& localTime) {
    constexpr int kFirstRefusedNumber = 20;
    for (int n = 1; n < kFirstRefusedNumber; ++n) {
        std::string path = folder + MakeMiniDumpName(base, n, localTime);
        const CSymbolLock lock;
        switch (WriteProcessDump(NSTextPackage::Utf8ToUtf16Default(path), fault)) {
        case EDumpResult::kWritten:
            return path;
        case EDumpResult::kFailed:
            return {};
        case EDumpResult::kNameTaken:
            break;
        }
    }
    return {};
}

} // namespace NSDebugPackage
