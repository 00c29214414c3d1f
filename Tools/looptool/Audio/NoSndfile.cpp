#include "looptool/Audio/AudioReader.h"
#include "looptool/Audio/Sndfile.h"
#include "looptool/System/ToolFailure.h"

// The stand-in where libsndfile is not at hand.

namespace NSLoopTool {

bool HasSndfile() {
    return false;
}

bool ReadBySndfile(const std::vector<uint8_t>& /*bytes*/, const std::string& /*name*/,
                   const ProgressFunction& /*progress*/, SAudio& /*audio*/) {
    return false;
}

std::unique_ptr<CABCFlacEncoder> MakeFlacEncoder(COutputFile& /*output*/, const std::string& name,
                                                 int32_t /*rate*/, size_t /*channels*/,
                                                 int32_t /*bits*/) {
    throw CToolFailure(name + ": this build has no libsndfile: it writes WAV, AIFF and raw audio");
}

std::optional<uint64_t> FlacSize(const SAudio& /*audio*/) {
    return std::nullopt;
}

} // namespace NSLoopTool
