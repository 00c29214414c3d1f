#include "looptool/Playing/Player.h"
#include "looptool/System/ToolFailure.h"

// The stand-in where PortAudio is not at hand.

namespace NSLoopTool {

bool HasPortAudio() {
    return false;
}

void PlayLoop(CLoop& /*loop*/, double /*tempo*/, double /*loops*/) {
    throw CToolFailure("this build has no PortAudio and cannot play; preview writes what it would "
                       "play",
                       kExitCode_Usage);
}

} // namespace NSLoopTool
