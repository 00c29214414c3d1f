#include "FileLib/Glue/FileInfoRecords.h"

#include "FileLib/Glue/GlueGuard.h"

namespace NSFileLibInternals {

NSFileLib::SFileInfo ToInterface(const SFileInfo& info) {
    return {info.fHidden,         info.fReadOnly,      info.fAlias,    info.fCreationTime,
            info.fLastAccessTime, info.fLastWriteTime, info.fSizeHigh, info.fSizeLow};
}

SFileInfo FromInterface(const NSFileLib::SFileInfo& info) {
    return {info.fHidden,         info.fReadOnly,      info.fAlias,    info.fCreationTime,
            info.fLastAccessTime, info.fLastWriteTime, info.fSizeHigh, info.fSizeLow};
}

void PutVolumeInfo(NSFileLib::SVolumeInfo* record, const SVolumeInfo& info) {
    PutText(record->fLabel, info.fLabel);
    PutText(record->fFileSystem, info.fFileSystem);
    record->fSerialNumber = info.fSerialNumber;
    record->fMaxComponentLength = info.fMaxComponentLength;
    record->fFlags = info.fFlags;
}

} // namespace NSFileLibInternals
