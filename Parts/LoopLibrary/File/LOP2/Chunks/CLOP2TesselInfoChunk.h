#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "TESL": data of the authoring tool.
class CLOP2TesselInfoChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2TesselInfoChunk(NSPorter::CMedia& media);

    /// 0.0.0, or 2.0.0 and above.
    const NSPorter::SVersionRecord& GetVersion() const { return fVersion; }
    bool IsTempoSync() const { return fTempoSync; }
    /// 93 to 96, from the byte that is stored.
    int32_t GetGridUnit() const { return fGridUnit; }
    /// Bytes of audio that the tool exported, 0 or more.
    int32_t GetExportedSize() const { return fExportedSize; }
    /// Slices that the tool exported, 0 or more.
    int32_t GetExportedSliceCount() const { return fExportedSliceCount; }

private:
    bool IsValid() const;

    NSPorter::SVersionRecord fVersion;
    bool fTempoSync;
    int32_t fGridUnit;
    int32_t fExportedSize;
    int32_t fExportedSliceCount;
};

} // namespace NSLOPDLL
