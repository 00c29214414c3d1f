#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"

#include <cstdint>
#include <string>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// First word of the "HEAD" chunk, by which a file is recognised.
constexpr uint32_t kLOP2HeadMagic = 0x490CF18D;

/// "HEAD": what makes the file a LOP2 file, and the version of its contents.
class CLOP2HeadChunk final : public CABCLOP2Chunk {
public:
    /// Raises XVersionTooNew both for a version below 1.0.0 and for a major above 3.
    explicit CLOP2HeadChunk(NSPorter::CMedia& media);

    /// 1.0.0 to 3.x. Tells in which scale the devices' times are stored.
    const NSPorter::SVersionRecord& GetVersion() const { return fVersion; }
    /// Free text that nothing uses.
    const std::u16string& GetText() const { return fHeadText; }

private:
    NSPorter::SVersionRecord fVersion;
    std::u16string fHeadText;
};

} // namespace NSLOPDLL
