#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"

namespace NSLOPDLL {

CLOP2DecompressCallback::~CLOP2DecompressCallback() = default;

bool CLOP2DecompressCallback::ShouldStop(uint32_t /*framesDone*/) {
    return false;
}

} // namespace NSLOPDLL
