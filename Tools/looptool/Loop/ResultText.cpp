#include "looptool/Loop/ResultText.h"

namespace NSLoopTool {

std::string ResultText(LOPResult result) {
    switch (result) {
    case kLOPResult_OK:
        return "no error";
    case kLOPResult_Aborted:
        return "the load was stopped";
    case kLOPResult_NoCreatorInfo:
        return "the loop holds no creator texts";
    case kLOPResult_OutOfMemory:
        return "not enough memory";
    case kLOPResult_FileCorrupt:
        return "not a loop file, or a damaged one";
    case kLOPResult_FileTooNew:
        return "written in a newer version of the format";
    case kLOPResult_ZeroLoopLength:
        return "the loop's musical length is zero";
    case kLOPResult_InvalidSlice:
        return "no such slice";
    case kLOPResult_InvalidSampleRate:
        return "the sample rate must be 11025 to 1000000";
    case kLOPResult_InvalidTempo:
        return "the tempo must be 20 to 450 BPM";
    default:
        return "the library answered " + std::to_string(result);
    }
}

} // namespace NSLoopTool
