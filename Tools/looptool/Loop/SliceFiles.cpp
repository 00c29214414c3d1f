#include "looptool/Loop/SliceFiles.h"

#include "looptool/System/NativePath.h"

#include <algorithm>

namespace NSLoopTool {

std::string StemOf(const std::string& loopFile) {
    return loopFile == "-" ? "loop" : ArgumentOfPath(PathOfArgument(loopFile).stem());
}

std::string SliceFileName(const std::string& loopFile, int32_t slice, int32_t count,
                          const std::string& suffix) {
    const std::string number = std::to_string(slice);
    const size_t digits = std::max<size_t>(3, std::to_string(std::max(count - 1, 0)).size());
    return StemOf(loopFile) + "_slice_" + std::string(digits - number.size(), '0') + number +
           suffix;
}

} // namespace NSLoopTool
