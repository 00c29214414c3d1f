#include "FileLib/Implementation/CDirScannerImpl.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

using NSFileLib::SFileInfo;

namespace {

constexpr const char* kScanFailed = "WinGetFileInfo FindFirstFile failed";

} // namespace

CDirScannerImpl::CDirScannerImpl(const std::u16string& folder) : fOps(GetPlatformFileOps()) {
    RequirePath(folder);
    const CErrorBoxesOff boxesOff;
    const uint32_t errorCode = fOps.FindFirst(WithTrailingSeparator(folder), fScan, fEntry);
    fAtEnd = errorCode == kError_NoMoreFiles;
    if (!fAtEnd) {
        CheckForError<NSLichen::XNotFound>(errorCode, kScanFailed);
    }
}

CDirScannerImpl::~CDirScannerImpl() {
    if (fScan != kNoPlatformHandle) {
        fOps.EndFind(fScan);
    }
}

const SPlatformEntry& CDirScannerImpl::GetEntry() const {
    if (fAtEnd) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence("scanner is at its end"));
    }
    return fEntry;
}

const std::u16string& CDirScannerImpl::GetName() const {
    return GetEntry().fName;
}

bool CDirScannerImpl::IsFolder() const {
    return (GetEntry().fAttributes & kAttribute_Directory) != 0;
}

SFileInfo CDirScannerImpl::GetInfo() const {
    return FileInfoOfEntry(GetEntry());
}

void CDirScannerImpl::Advance() {
    GetEntry();
    const uint32_t errorCode = fOps.FindNext(fScan, fEntry);
    fAtEnd = errorCode == kError_NoMoreFiles;
    if (!fAtEnd) {
        CheckForError<NSLichen::XNotFound>(errorCode, kScanFailed);
    }
}

} // namespace NSFileLibInternals
