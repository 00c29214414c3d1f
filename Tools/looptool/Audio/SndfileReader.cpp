#include "looptool/Audio/AudioReader.h"
#include "looptool/Audio/Sndfile.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sndfile.h>

namespace NSLoopTool {

namespace {

struct SCloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

struct SBytesRead {
    const std::vector<uint8_t>& fBytes;
    sf_count_t fPosition = 0;

    sf_count_t GetLength() const { return static_cast<sf_count_t>(fBytes.size()); }
};

sf_count_t Length(void* user) {
    return static_cast<SBytesRead*>(user)->GetLength();
}

sf_count_t Seek(sf_count_t offset, int whence, void* user) {
    auto& file = *static_cast<SBytesRead*>(user);
    const sf_count_t base =
        whence == SEEK_SET ? 0 : (whence == SEEK_CUR ? file.fPosition : file.GetLength());
    file.fPosition = std::clamp<sf_count_t>(base + offset, 0, file.GetLength());
    return file.fPosition;
}

sf_count_t Read(void* target, sf_count_t count, void* user) {
    auto& file = *static_cast<SBytesRead*>(user);
    const sf_count_t here = std::min(file.GetLength() - file.fPosition, count);
    std::memcpy(target, file.fBytes.data() + file.fPosition, static_cast<size_t>(here));
    file.fPosition += here;
    return here;
}

sf_count_t Tell(void* user) {
    return static_cast<SBytesRead*>(user)->fPosition;
}

int32_t KeptBitDepth(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_DPCM_8:
    case SF_FORMAT_DPCM_16:
    case SF_FORMAT_ALAC_16:
        return 16;
    default:
        return 24;
    }
}

void ReadFrames(SNDFILE* file, const SF_INFO& info, const std::string& name,
                const ProgressFunction& progress, SAudio& audio) {
    const auto channels = static_cast<size_t>(info.channels);
    const int shift = 32 - audio.fBitDepth;
    std::vector<int> lot(kLotFrames * channels);
    while (const sf_count_t frames = sf_readf_int(file, lot.data(), sf_count_t{kLotFrames})) {
        StopIfInterrupted();
        for (size_t i = 0; i < static_cast<size_t>(frames) * channels; ++i) {
            audio.fPlanes[i % channels].push_back(lot[i] >> shift);
        }
        progress(static_cast<int64_t>(audio.GetFrameCount()) * 100 /
                 std::max<sf_count_t>(info.frames, 1));
    }
    const bool isLengthKnown = info.frames > 0 && info.frames < SF_COUNT_MAX;
    if (isLengthKnown && static_cast<sf_count_t>(audio.GetFrameCount()) < info.frames) {
        throw CToolFailure(name + ": is cut short: it says " + std::to_string(info.frames) +
                           " frames and holds " + std::to_string(audio.GetFrameCount()));
    }
    if (sf_error(file) != SF_ERR_NO_ERROR) {
        throw CToolFailure(name + ": " + sf_strerror(file));
    }
}

void ReadMarks(SNDFILE* file, SAudio& audio) {
    SF_CUES cues{};
    if (sf_command(file, SFC_GET_CUE, &cues, sizeof cues) == SF_TRUE) {
        for (uint32_t i = 0; i < std::min<uint32_t>(cues.cue_count, 100); ++i) {
            audio.fCues.push_back(cues.cue_points[i].sample_offset);
        }
    }
    SF_INSTRUMENT instrument{};
    if (sf_command(file, SFC_GET_INSTRUMENT, &instrument, sizeof instrument) == SF_TRUE &&
        instrument.loop_count > 0) {
        audio.fLoop = {instrument.loops[0].start, instrument.loops[0].end};
    }
}

} // namespace

bool ReadBySndfile(const std::vector<uint8_t>& bytes, const std::string& name,
                   const ProgressFunction& progress, SAudio& audio) {
    SBytesRead source{bytes};
    SF_VIRTUAL_IO callbacks{Length, Seek, Read, nullptr, Tell};
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, SCloseSound> file(
        sf_open_virtual(&callbacks, SFM_READ, &info, &source));
    if (file == nullptr) {
        return false;
    }
    if (info.channels < 1 || info.channels > 2) {
        throw CToolFailure(name + ": has " + std::to_string(info.channels) +
                           " channels; a loop has 1 or 2");
    }
    audio.fSampleRate = info.samplerate;
    audio.fBitDepth = KeptBitDepth(info.format);
    audio.fPlanes.resize(static_cast<size_t>(info.channels));
    // Samples arrive at the top of 32-bit words; floating point is scaled and clipped to them.
    sf_command(file.get(), SFC_SET_SCALE_FLOAT_INT_READ, nullptr, SF_TRUE);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    ReadFrames(file.get(), info, name, progress, audio);
    ReadMarks(file.get(), audio);
    return true;
}

} // namespace NSLoopTool
