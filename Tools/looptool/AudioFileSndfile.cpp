#include "looptool/AudioFile.h"

#include "looptool/COutputFile.h"
#include "looptool/Interrupt.h"
#include "looptool/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sndfile.h>

namespace NSLoopTool {

namespace {

constexpr sf_count_t kLotFrames = 65536;

struct SCloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using CSoundFile = std::unique_ptr<SNDFILE, SCloseSound>;

int32_t KeptBitDepth(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_DPCM_8:
    case SF_FORMAT_DPCM_16:
        return 16;
    default:
        return 24;
    }
}

// A file under construction in memory, so that its header can be completed before anything reaches
// a pipe.
struct SMemoryFile {
    std::vector<char> fBytes;
    sf_count_t fPosition = 0;
};

sf_count_t MemoryLength(void* user) {
    return static_cast<sf_count_t>(static_cast<SMemoryFile*>(user)->fBytes.size());
}

sf_count_t MemorySeek(sf_count_t offset, int whence, void* user) {
    auto& file = *static_cast<SMemoryFile*>(user);
    const sf_count_t base =
        whence == SEEK_SET ? 0 : (whence == SEEK_CUR ? file.fPosition : MemoryLength(user));
    file.fPosition = base + offset;
    return file.fPosition;
}

sf_count_t MemoryRead(void* target, sf_count_t count, void* user) {
    auto& file = *static_cast<SMemoryFile*>(user);
    const sf_count_t here = std::clamp<sf_count_t>(MemoryLength(user) - file.fPosition, 0, count);
    std::memcpy(target, file.fBytes.data() + file.fPosition, static_cast<size_t>(here));
    file.fPosition += here;
    return here;
}

sf_count_t MemoryWrite(const void* source, sf_count_t count, void* user) {
    auto& file = *static_cast<SMemoryFile*>(user);
    const auto end = static_cast<size_t>(file.fPosition + count);
    file.fBytes.resize(std::max(file.fBytes.size(), end));
    std::memcpy(file.fBytes.data() + file.fPosition, source, static_cast<size_t>(count));
    file.fPosition += count;
    return count;
}

sf_count_t MemoryTell(void* user) {
    return static_cast<SMemoryFile*>(user)->fPosition;
}

// `write` puts frames first to first + count of all planes, interleaved, into the open file and
// answers the frames written.
template <class Write>
void WriteWav(const std::string& path, int32_t sampleRate, size_t channels, size_t frames,
              int subtype, Write write) {
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = static_cast<int>(channels);
    info.format = SF_FORMAT_WAV | subtype;
    SMemoryFile memory;
    SF_VIRTUAL_IO callbacks{MemoryLength, MemorySeek, MemoryRead, MemoryWrite, MemoryTell};
    CSoundFile file(sf_open_virtual(&callbacks, SFM_WRITE, &info, &memory));
    if (file == nullptr) {
        throw CToolFailure(path + ": cannot write WAV: " + sf_strerror(nullptr));
    }
    // That chunk holds the time of writing: the same audio would make different files.
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    for (size_t first = 0; first < frames;) {
        StopIfInterrupted();
        const size_t count = std::min(frames - first, static_cast<size_t>(kLotFrames));
        if (write(file.get(), first, count) != static_cast<sf_count_t>(count)) {
            throw CToolFailure(path + ": cannot write WAV: " + sf_strerror(file.get()));
        }
        first += count;
    }
    file.reset();
    COutputFile output(path);
    output.Write(memory.fBytes.data(), memory.fBytes.size());
    output.Commit();
}

// A lot of frames, channel after channel within each frame.
template <class Sample>
std::vector<Sample> Interleave(const std::vector<std::vector<Sample>>& planes, size_t first,
                               size_t count) {
    std::vector<Sample> lot(count * planes.size());
    for (size_t channel = 0; channel < planes.size(); ++channel) {
        for (size_t i = 0; i < count; ++i) {
            lot[i * planes.size() + channel] = planes[channel][first + i];
        }
    }
    return lot;
}

} // namespace

SAudio ReadAudioFile(const std::string& path, const ProgressFunction& progress) {
    SF_INFO info{};
    CSoundFile file(sf_open(path.c_str(), SFM_READ, &info));
    if (file == nullptr) {
        throw CToolFailure(path + ": " + sf_strerror(nullptr));
    }
    if (info.channels < 1 || info.channels > 2) {
        throw CToolFailure(path + ": has " + std::to_string(info.channels) +
                           " channels; a loop has 1 or 2");
    }
    SAudio audio;
    audio.fSampleRate = info.samplerate;
    audio.fBitDepth = KeptBitDepth(info.format);
    const auto channels = static_cast<size_t>(info.channels);
    audio.fPlanes.resize(channels);
    // Samples arrive at the top of 32-bit words; floating point is scaled and clipped to them.
    sf_command(file.get(), SFC_SET_SCALE_FLOAT_INT_READ, nullptr, SF_TRUE);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const int shift = 32 - audio.fBitDepth;
    std::vector<int> lot(static_cast<size_t>(kLotFrames) * channels);
    while (const sf_count_t frames = sf_readf_int(file.get(), lot.data(), kLotFrames)) {
        StopIfInterrupted();
        for (size_t i = 0; i < static_cast<size_t>(frames) * channels; ++i) {
            audio.fPlanes[i % channels].push_back(lot[i] >> shift);
        }
        if (info.frames > 0) {
            progress(static_cast<int64_t>(audio.GetFrameCount()) * 100 / info.frames);
        }
    }
    if (sf_error(file.get()) != SF_ERR_NO_ERROR) {
        throw CToolFailure(path + ": " + sf_strerror(file.get()));
    }
    if (audio.GetFrameCount() == 0) {
        throw CToolFailure(path + ": holds no audio");
    }
    return audio;
}

void WriteAudioFile(const std::string& path, const SAudio& audio) {
    const int subtype = audio.fBitDepth == 16 ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24;
    const int shift = 32 - audio.fBitDepth;
    WriteWav(path, audio.fSampleRate, audio.fPlanes.size(), audio.GetFrameCount(), subtype,
             [&](SNDFILE* file, size_t first, size_t count) {
                 std::vector<int32_t> lot = Interleave(audio.fPlanes, first, count);
                 for (int32_t& sample : lot) {
                     sample = static_cast<int32_t>(static_cast<uint32_t>(sample) << shift);
                 }
                 return sf_writef_int(file, lot.data(), static_cast<sf_count_t>(count));
             });
}

void WriteFloatFile(const std::string& path, int32_t sampleRate,
                    const std::vector<std::vector<float>>& planes) {
    WriteWav(path, sampleRate, planes.size(), planes.front().size(), SF_FORMAT_FLOAT,
             [&](SNDFILE* file, size_t first, size_t count) {
                 const std::vector<float> lot = Interleave(planes, first, count);
                 return sf_writef_float(file, lot.data(), static_cast<sf_count_t>(count));
             });
}

} // namespace NSLoopTool
