#include "looptool/Audio/AudioReader.h"

#include "looptool/Audio/Sndfile.h"
#include "looptool/Files/InputFile.h"
#include "looptool/System/ToolFailure.h"

namespace NSLoopTool {

SAudio ReadAudioFile(const std::string& path, const ProgressFunction& progress) {
    const std::vector<uint8_t> bytes = ReadInputFile(path);
    const std::string name = InputName(path);
    SAudio audio;
    if (!ReadWav(bytes, name, progress, audio) && !ReadAiff(bytes, name, progress, audio) &&
        !ReadBySndfile(bytes, name, progress, audio)) {
        throw CToolFailure(name + (HasSndfile() ? ": not an audio file of a known kind"
                                                : ": not a WAV or AIFF file that can be read (this "
                                                  "build has no libsndfile for other kinds)"));
    }
    if (audio.GetFrameCount() == 0) {
        throw CToolFailure(name + ": holds no audio");
    }
    return audio;
}

std::vector<float> MonoOf(const SAudio& audio) {
    std::vector<float> mono(audio.GetFrameCount());
    const double scale = 1.0 / (static_cast<double>(int64_t{1} << (audio.fBitDepth - 1)) *
                                static_cast<double>(audio.fPlanes.size()));
    for (size_t i = 0; i < mono.size(); ++i) {
        int64_t sum = 0;
        for (const std::vector<int32_t>& plane : audio.fPlanes) {
            sum += plane[i];
        }
        mono[i] = static_cast<float>(static_cast<double>(sum) * scale);
    }
    return mono;
}

} // namespace NSLoopTool
