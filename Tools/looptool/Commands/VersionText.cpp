#include "looptool/Commands/VersionText.h"

#include "looptool/Audio/Sndfile.h"
#include "looptool/Picture/PngCanvas.h"
#include "looptool/Playing/Player.h"

#include "LoopLibrary/Public/LoopLibrary.h"

namespace NSLoopTool {

namespace {

std::string Line(bool isThere, const char* with, const char* without) {
    return std::string("\n  ") + (isThere ? with : without);
}

} // namespace

std::string VersionText() {
    return "looptool " + std::to_string(LOOPLIBRARY_VERSION_MAJOR) + "." +
           std::to_string(LOOPLIBRARY_VERSION_MINOR) + "." +
           std::to_string(LOOPLIBRARY_VERSION_PATCH) +
           Line(HasSndfile(), "with libsndfile: reads WAV, AIFF, FLAC, OGG and more, writes FLAC",
                "without libsndfile: reads and writes WAV and AIFF only") +
           Line(HasCairo(), "with cairo: plots to PNG",
                "without cairo: plots to SVG and text only") +
           Line(HasPortAudio(), "with PortAudio: plays", "without PortAudio: cannot play");
}

} // namespace NSLoopTool
