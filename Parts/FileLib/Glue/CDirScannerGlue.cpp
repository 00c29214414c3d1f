#include "FileLib/Glue/CDirScannerGlue.h"

#include "FileLib/Glue/GlueGuard.h"

#include <utility>

namespace NSFileLibInternals {

CDirScannerGlue::CDirScannerGlue(std::unique_ptr<CDirScannerImpl> impl) : fImpl(std::move(impl)) {}

int32_t CDirScannerGlue::CheckEntry(int32_t check) const {
    if (check == NSFileLib::kFileLibStatus_OK && fImpl->IsAtEnd()) {
        return NSFileLib::kFileLibStatus_IllegalCallSequence;
    }
    return check;
}

int32_t CDirScannerGlue::IsAtEnd() const {
    return fImpl == nullptr || fImpl->IsAtEnd() ? 1 : 0;
}

int32_t CDirScannerGlue::GetCurrent(char16_t* name, NSFileLib::SFileInfo* info,
                                    int32_t* isFolder) const {
    const int32_t check = CheckEntry(CheckCall(IsValid(), {name, info, isFolder}));
    return RunGuarded(check, [&] {
        PutUnfinished(name);
        PutUnfinished(info);
        PutUnfinished(isFolder);
        PutText(name, fImpl->GetName());
        *info = fImpl->GetInfo();
        PutFlag(isFolder, fImpl->IsFolder());
    });
}

int32_t CDirScannerGlue::Advance() {
    return RunGuarded(CheckEntry(CheckCall(IsValid(), {})), [this] { fImpl->Advance(); });
}

} // namespace NSFileLibInternals
