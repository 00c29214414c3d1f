#pragma once

#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Interface/FileLibRecords.h"
#include "FileLib/Platform/IPlatformFileOps.h"

namespace NSFileLibInternals {

/// Between the records of the interfaces and those of the implementation.
NSFileLib::SFileInfo ToInterface(const SFileInfo& info);
SFileInfo FromInterface(const NSFileLib::SFileInfo& info);
void PutVolumeInfo(NSFileLib::SVolumeInfo* record, const SVolumeInfo& info);

} // namespace NSFileLibInternals
