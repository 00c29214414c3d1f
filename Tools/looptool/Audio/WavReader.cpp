#include "looptool/Audio/AudioReader.h"
#include "looptool/Audio/StoredSamples.h"

#include <optional>

namespace NSLoopTool {

namespace {

constexpr uint64_t kFormat_PCM = 1;
constexpr uint64_t kFormat_Float = 3;
constexpr uint64_t kFormat_Extensible = 0xFFFE;

std::optional<SStoredFormat> ReadFormat(CByteCursor cursor, uint64_t size) {
    if (size < 16) {
        return std::nullopt;
    }
    SStoredFormat format;
    uint64_t kind = cursor.Number(2);
    format.fChannels = static_cast<uint32_t>(cursor.Number(2));
    format.fRate = static_cast<uint32_t>(cursor.Number(4));
    cursor.Skip(6);
    format.fBits = static_cast<uint32_t>(cursor.Number(2));
    if (kind == kFormat_Extensible && size >= 26) {
        cursor.Skip(8);
        kind = cursor.Number(2);
    }
    format.fIsFloat = kind == kFormat_Float;
    format.fIsUnsigned = format.fBits == 8;
    const bool isKnown = kind == kFormat_PCM || kind == kFormat_Float;
    return isKnown && format.IsReadable() ? std::optional(format) : std::nullopt;
}

void ReadCues(CByteCursor cursor, SAudio& audio) {
    const uint64_t count = cursor.Number(4);
    constexpr size_t kCueBytes = 24;
    for (uint64_t i = 0; i < count && cursor.GetLeft() >= kCueBytes; ++i) {
        cursor.Skip(20); // number, place in a play list, and the chunk: only the audio's is in use
        audio.fCues.push_back(static_cast<int64_t>(cursor.Number(4)));
    }
}

// The end of a loop is stored as its last frame.
void ReadSamplerLoop(CByteCursor cursor, SAudio& audio) {
    cursor.Skip(28);
    const uint64_t loops = cursor.Number(4);
    cursor.Skip(12);
    if (loops > 0) {
        const auto start = static_cast<int64_t>(cursor.Number(4));
        audio.fLoop = {start, static_cast<int64_t>(cursor.Number(4)) + 1};
    }
}

// Programs that write to a pipe do not know the size: they store one of these.
bool IsPlaceholder(uint64_t size) {
    return size >= 0xFFFFFF00 || (size >= 0x7FFFEF00 && size <= 0x7FFFF000) || size == 0x7FFFFFFF;
}

} // namespace

bool ReadWav(const std::vector<uint8_t>& bytes, const std::string& name,
             const ProgressFunction& progress, SAudio& audio) {
    CByteCursor cursor(bytes, name, false);
    if (cursor.GetLeft() < 12 || cursor.ID() != "RIFF") {
        return false;
    }
    cursor.Skip(4);
    if (cursor.ID() != "WAVE") {
        return false;
    }
    std::optional<SStoredFormat> format;
    std::optional<size_t> soundStart;
    uint64_t soundBytes = 0;
    while (cursor.GetLeft() >= 8) {
        const std::string id = cursor.ID();
        const uint64_t size = cursor.Number(4);
        if (id == "fmt ") {
            format = ReadFormat(cursor, size);
            if (!format) {
                return false;
            }
        } else if (id == "data" && !soundStart) {
            soundStart = cursor.GetPosition();
            soundBytes = IsPlaceholder(size) ? cursor.GetLeft() : size;
        } else if (id == "cue " && size >= 4) {
            ReadCues(cursor, audio);
        } else if (id == "smpl" && size >= 36 + 24) {
            ReadSamplerLoop(cursor, audio);
        }
        cursor.Skip(size + (size & 1));
    }
    if (!format || !soundStart) {
        cursor.Fail(format ? "it has no audio" : "it does not say how its audio is stored");
    }
    const uint64_t frames = format->GetFrameBytes() == 0 ? 0 : soundBytes / format->GetFrameBytes();
    ReadStoredSamples(bytes, *soundStart, frames, *format, name, progress, audio);
    return true;
}

} // namespace NSLoopTool
