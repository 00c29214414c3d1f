#pragma once

#include "FileLib/Source/FileLibRecords.h"
#include "FileLib/Source/Win/FileInfo.h"
#include "FileLib/Source/Win/IPlatformFileOps.h"

namespace NSFileLibInternals {

// Between the records of the interfaces and those of the implementation.
NSFileLib::SFileInfo ToInterface(const SFileInfo& info);
SFileInfo FromInterface(const NSFileLib::SFileInfo& info);
void PutVolumeInfo(NSFileLib::SVolumeInfo* record, const SVolumeInfo& info);

} // namespace NSFileLibInternals
