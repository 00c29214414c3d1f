#include "looptool/AudioFile.h"

#include "looptool/COutputFile.h"
#include "looptool/InputFile.h"
#include "looptool/Interrupt.h"
#include "looptool/ToolFailure.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

// The home of audio files where libsndfile is not at hand: WAV files of PCM and 32-bit floats.

namespace NSLoopTool {

namespace {

constexpr uint16_t kFormat_PCM = 1;
constexpr uint16_t kFormat_Float = 3;
constexpr uint16_t kFormat_Extensible = 0xFFFE;
constexpr uint32_t kFormatChunkSize = 16;
constexpr size_t kMaxDataBytes = 0xFFFFFFFF - 64;

// A cursor over the file's bytes that knows how much is left.
class CCursor {
public:
    CCursor(const std::vector<uint8_t>& bytes, const std::string& path)
        : fBytes(bytes), fPath(path) {}

    size_t GetLeft() const { return fBytes.size() - fPosition; }
    void Skip(size_t count) { fPosition += std::min(count, GetLeft()); }
    uint32_t Little(size_t width) {
        if (width > GetLeft()) {
            Fail("ends early");
        }
        uint32_t value = 0;
        for (size_t i = 0; i < width; ++i) {
            value |= static_cast<uint32_t>(fBytes[fPosition + i]) << (8 * i);
        }
        fPosition += width;
        return value;
    }
    std::string ID() {
        std::string id(4, ' ');
        for (char& letter : id) {
            letter = static_cast<char>(Little(1));
        }
        return id;
    }
    [[noreturn]] void Fail(const std::string& what) const {
        throw CToolFailure(fPath + ": not a WAV file that can be read: " + what);
    }

private:
    const std::vector<uint8_t>& fBytes;
    const std::string& fPath;
    size_t fPosition = 0;
};

struct SFormat {
    uint16_t fKind = 0;
    uint16_t fChannels = 0;
    uint32_t fRate = 0;
    uint16_t fBits = 0;
};

SFormat ReadFormat(CCursor& cursor, uint32_t size) {
    SFormat format;
    format.fKind = static_cast<uint16_t>(cursor.Little(2));
    format.fChannels = static_cast<uint16_t>(cursor.Little(2));
    format.fRate = cursor.Little(4);
    cursor.Skip(6);
    format.fBits = static_cast<uint16_t>(cursor.Little(2));
    size_t rest = size - kFormatChunkSize;
    if (format.fKind == kFormat_Extensible && rest >= 10) {
        cursor.Skip(8);
        format.fKind = static_cast<uint16_t>(cursor.Little(2));
        rest -= 10;
    }
    cursor.Skip(rest + (size & 1));
    return format;
}

int32_t FromFloat(uint32_t bits) {
    float value = 0.0f;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int32_t>(
        std::lround(std::clamp(static_cast<double>(value), -1.0, 1.0) * 8388607.0));
}

// One stored sample at the depth that is kept.
int32_t ReadSample(CCursor& cursor, const SFormat& format) {
    if (format.fKind == kFormat_Float) {
        return FromFloat(cursor.Little(4));
    }
    switch (format.fBits) {
    case 8:
        return (static_cast<int32_t>(cursor.Little(1)) - 128) * 256;
    case 16:
        return static_cast<int16_t>(cursor.Little(2));
    case 24:
        return static_cast<int32_t>(cursor.Little(3) << 8) >> 8;
    default:
        return static_cast<int32_t>(cursor.Little(4)) >> 8;
    }
}

bool IsReadable(const SFormat& format) {
    if (format.fKind == kFormat_Float) {
        return format.fBits == 32;
    }
    return format.fKind == kFormat_PCM && format.fBits >= 8 && format.fBits <= 32 &&
           format.fBits % 8 == 0;
}

void PutLittle(std::vector<uint8_t>& bytes, uint32_t value, size_t width) {
    for (size_t i = 0; i < width; ++i) {
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
}

void PutID(std::vector<uint8_t>& bytes, const char* id) {
    bytes.insert(bytes.end(), id, id + 4);
}

template <class Sample, class Encode>
void WriteWav(const std::string& path, int32_t sampleRate, uint16_t kind, uint32_t sampleBytes,
              const std::vector<std::vector<Sample>>& planes, Encode encode) {
    const size_t frames = planes.front().size();
    const auto frameBytes = static_cast<uint32_t>(planes.size()) * sampleBytes;
    if (frames > kMaxDataBytes / frameBytes) {
        throw CToolFailure(path + ": too long for a WAV file");
    }
    const auto dataBytes = static_cast<uint32_t>(frames) * frameBytes;
    std::vector<uint8_t> bytes;
    bytes.reserve(dataBytes + 46);
    PutID(bytes, "RIFF");
    PutLittle(bytes, 4 + 8 + kFormatChunkSize + 8 + dataBytes + (dataBytes & 1), 4);
    PutID(bytes, "WAVE");
    PutID(bytes, "fmt ");
    PutLittle(bytes, kFormatChunkSize, 4);
    PutLittle(bytes, kind, 2);
    PutLittle(bytes, static_cast<uint32_t>(planes.size()), 2);
    PutLittle(bytes, static_cast<uint32_t>(sampleRate), 4);
    PutLittle(bytes, static_cast<uint32_t>(sampleRate) * frameBytes, 4);
    PutLittle(bytes, frameBytes, 2);
    PutLittle(bytes, sampleBytes * 8, 2);
    PutID(bytes, "data");
    PutLittle(bytes, dataBytes, 4);
    for (size_t frame = 0; frame < frames; ++frame) {
        for (const std::vector<Sample>& plane : planes) {
            PutLittle(bytes, encode(plane[frame]), sampleBytes);
        }
    }
    if ((dataBytes & 1) != 0) {
        bytes.push_back(0);
    }
    StopIfInterrupted();
    COutputFile output(path);
    output.Write(bytes.data(), bytes.size());
    output.Commit();
}

} // namespace

SAudio ReadAudioFile(const std::string& path, const ProgressFunction& progress) {
    const std::vector<uint8_t> bytes = ReadInputFile(path);
    CCursor cursor(bytes, path);
    if (cursor.ID() != "RIFF") {
        cursor.Fail("no RIFF file");
    }
    cursor.Skip(4);
    if (cursor.ID() != "WAVE") {
        cursor.Fail("no WAVE form");
    }
    SFormat format;
    uint32_t size = 0;
    for (std::string id = cursor.ID(); id != "data"; id = cursor.ID()) {
        size = cursor.Little(4);
        if (id == "fmt " && size >= kFormatChunkSize) {
            format = ReadFormat(cursor, size);
        } else {
            cursor.Skip(size_t{size} + (size & 1));
        }
    }
    size = cursor.Little(4);
    if (!IsReadable(format)) {
        cursor.Fail("its samples are neither PCM of 8 to 32 bits nor 32-bit floats");
    }
    if (format.fChannels < 1 || format.fChannels > 2) {
        throw CToolFailure(path + ": has " + std::to_string(format.fChannels) +
                           " channels; a loop has 1 or 2");
    }
    if (format.fRate > static_cast<uint32_t>(std::numeric_limits<int32_t>::max())) {
        cursor.Fail("its sample rate is out of range");
    }
    SAudio audio;
    audio.fSampleRate = static_cast<int32_t>(format.fRate);
    audio.fBitDepth = format.fKind == kFormat_PCM && format.fBits <= 16 ? 16 : 24;
    const size_t frameBytes = size_t{format.fChannels} * format.fBits / 8;
    const size_t frames = std::min<size_t>(size, cursor.GetLeft()) / frameBytes;
    if (frames == 0) {
        throw CToolFailure(path + ": holds no audio");
    }
    audio.fPlanes.assign(format.fChannels, std::vector<int32_t>(frames));
    for (size_t frame = 0; frame < frames; ++frame) {
        for (std::vector<int32_t>& plane : audio.fPlanes) {
            plane[frame] = ReadSample(cursor, format);
        }
        if (frame % 65536 == 0) {
            StopIfInterrupted();
            progress(static_cast<int64_t>(frame * 100 / frames));
        }
    }
    return audio;
}

void WriteAudioFile(const std::string& path, const SAudio& audio) {
    WriteWav(path, audio.fSampleRate, kFormat_PCM, static_cast<uint32_t>(audio.fBitDepth) / 8,
             audio.fPlanes, [](int32_t sample) { return static_cast<uint32_t>(sample); });
}

void WriteFloatFile(const std::string& path, int32_t sampleRate,
                    const std::vector<std::vector<float>>& planes) {
    WriteWav(path, sampleRate, kFormat_Float, 4, planes, [](float sample) {
        uint32_t bits = 0;
        std::memcpy(&bits, &sample, sizeof bits);
        return bits;
    });
}

} // namespace NSLoopTool
