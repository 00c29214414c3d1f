#include "looptool/Picture/PngCanvas.h"
#include "looptool/System/ToolFailure.h"

// The stand-in where cairo is not at hand.

namespace NSLoopTool {

bool HasCairo() {
    return false;
}

std::unique_ptr<ICanvas> MakePngCanvas(double /*width*/, double /*height*/) {
    throw CToolFailure("this build has no cairo for PNG; it plots to .svg", kExitCode_Usage);
}

} // namespace NSLoopTool
