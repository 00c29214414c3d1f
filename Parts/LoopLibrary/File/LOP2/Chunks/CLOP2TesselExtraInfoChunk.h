#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "TSLX": how the authoring tool last showed the loop. Newer files carry it; its three device
/// flags then stand in for those of the device chunks in the edit settings.
class CLOP2TesselExtraInfoChunk final : public CABCLOP2Chunk {
public:
    /// Raises XVersionTooNew for any major other than 1, before anything else is read.
    explicit CLOP2TesselExtraInfoChunk(NSPorter::CMedia& media);

    const NSPorter::SVersionRecord& GetVersion() const { return fVersion; }
    /// As stored: 1 to 3 have a meaning.
    uint32_t GetViewMode() const { return fViewMode; }
    bool IsShaperEnabled() const { return fShaperEnabled; }
    bool IsEqualizerEnabled() const { return fEqualizerEnabled; }
    bool IsCompressorEnabled() const { return fCompressorEnabled; }
    uint32_t GetViewStart() const { return fViewStart; }
    uint32_t GetViewEnd() const { return fViewEnd; }
    bool GetViewFlag() const { return fViewFlag; }

private:
    NSPorter::SVersionRecord fVersion;
    uint32_t fViewMode;
    bool fShaperEnabled;
    bool fEqualizerEnabled;
    bool fCompressorEnabled;
    uint32_t fViewStart;
    uint32_t fViewEnd;
    bool fViewFlag;
};

} // namespace NSLOPDLL
