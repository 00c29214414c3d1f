#include "looptool/Audio/AudioReader.h"
#include "looptool/Audio/StoredSamples.h"

#include <cmath>
#include <map>
#include <optional>

namespace NSLoopTool {

namespace {

// The 80-bit floating-point number of a sample rate.
double ReadRate(CByteCursor& cursor) {
    constexpr int kExponentOffset = 16383 + 63;
    const auto exponent = static_cast<int>(cursor.Number(2) & 0x7FFF);
    const auto mantissa = static_cast<double>(cursor.Number(8));
    return std::ldexp(mantissa, exponent - kExponentOffset);
}

std::optional<SStoredFormat> ReadCommon(CByteCursor cursor, uint64_t size, bool isAifc,
                                        uint64_t& frames) {
    SStoredFormat format;
    format.fChannels = static_cast<uint32_t>(cursor.Number(2));
    frames = cursor.Number(4);
    // Depths between whole bytes are stored at the top of the next whole byte.
    format.fBits = static_cast<uint32_t>((cursor.Number(2) + 7) / 8 * 8);
    const double rate = ReadRate(cursor);
    format.fRate = rate >= 1.0 && rate < 4e9 ? static_cast<uint32_t>(rate) : 0;
    format.fIsLittleEndian = false;
    if (isAifc && size >= 22) {
        const std::string compression = cursor.ID();
        format.fIsLittleEndian = compression == "sowt";
        format.fIsFloat = compression == "fl32" || compression == "FL32" || compression == "fl64" ||
                          compression == "FL64";
        if (!format.fIsFloat && !format.fIsLittleEndian && compression != "NONE" &&
            compression != "twos") {
            return std::nullopt;
        }
    }
    return format.IsReadable() ? std::optional(format) : std::nullopt;
}

std::map<uint64_t, int64_t> ReadMarkers(CByteCursor cursor) {
    std::map<uint64_t, int64_t> markers;
    const uint64_t count = cursor.Number(2);
    for (uint64_t i = 0; i < count && cursor.GetLeft() >= 8; ++i) {
        const uint64_t number = cursor.Number(2);
        markers[number] = static_cast<int64_t>(cursor.Number(4));
        const uint64_t letters = cursor.Number(1);
        cursor.Skip(letters + (letters + 1) % 2);
    }
    return markers;
}

struct SInstrumentLoop {
    uint64_t fStart;
    uint64_t fEnd;
};

std::optional<SInstrumentLoop> ReadInstrument(CByteCursor cursor) {
    cursor.Skip(8);
    if (cursor.Number(2) == 0) {
        return std::nullopt;
    }
    const uint64_t start = cursor.Number(2);
    return SInstrumentLoop{start, cursor.Number(2)};
}

} // namespace

bool ReadAiff(const std::vector<uint8_t>& bytes, const std::string& name,
              const ProgressFunction& progress, SAudio& audio) {
    CByteCursor cursor(bytes, name, true);
    if (cursor.GetLeft() < 12 || cursor.ID() != "FORM") {
        return false;
    }
    cursor.Skip(4);
    const std::string kind = cursor.ID();
    if (kind != "AIFF" && kind != "AIFC") {
        return false;
    }
    std::optional<SStoredFormat> format;
    std::optional<size_t> soundStart;
    std::map<uint64_t, int64_t> markers;
    std::optional<SInstrumentLoop> loop;
    uint64_t frames = 0;
    while (cursor.GetLeft() >= 8) {
        const std::string id = cursor.ID();
        const uint64_t size = cursor.Number(4);
        if (id == "COMM" && size >= 18) {
            format = ReadCommon(cursor, size, kind == "AIFC", frames);
            if (!format) {
                return false;
            }
        } else if (id == "SSND" && size >= 8) {
            CByteCursor sound = cursor;
            const uint64_t offset = sound.Number(4);
            soundStart = cursor.GetPosition() + 8 + static_cast<size_t>(offset);
        } else if (id == "MARK" && size >= 2) {
            markers = ReadMarkers(cursor);
        } else if (id == "INST" && size >= 14) {
            loop = ReadInstrument(cursor);
        }
        cursor.Skip(size + (size & 1));
    }
    if (!format || !soundStart) {
        cursor.Fail(format ? "it has no audio" : "it does not say how its audio is stored");
    }
    ReadStoredSamples(bytes, *soundStart, frames, *format, name, progress, audio);
    for (const auto& [number, position] : markers) {
        audio.fCues.push_back(position);
    }
    if (loop && markers.contains(loop->fStart) && markers.contains(loop->fEnd)) {
        audio.fLoop = {markers[loop->fStart], markers[loop->fEnd]};
    }
    return true;
}

} // namespace NSLoopTool
