#include "looptool/Commands/MidiFile.h"

#include "LoopLibrary/Public/LoopLibrary.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>
#include <tuple>

namespace NSLoopTool {

namespace {

constexpr uint8_t kNoteOff = 0x80;
constexpr uint8_t kNoteOn = 0x90;
constexpr uint8_t kVelocity = 100;

struct SEvent {
    int64_t fTime;
    std::vector<uint8_t> fBytes;
};

void PutBig(std::vector<uint8_t>& bytes, uint64_t value, size_t width) {
    for (size_t i = 0; i < width; ++i) {
        bytes.push_back(static_cast<uint8_t>(value >> (8 * (width - 1 - i))));
    }
}

void PutText(std::vector<uint8_t>& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

// Seven bits a byte, the highest first, all but the last marked.
void PutDelta(std::vector<uint8_t>& bytes, int64_t ticks) {
    constexpr int kMostShift = 21;
    for (int shift = kMostShift; shift > 0; shift -= 7) {
        if (ticks >> shift != 0) {
            bytes.push_back(static_cast<uint8_t>(0x80 | (ticks >> shift & 0x7F)));
        }
    }
    bytes.push_back(static_cast<uint8_t>(ticks & 0x7F));
}

std::vector<SEvent> EventsOf(const SMidiSong& song) {
    std::vector<SEvent> events;
    const auto microseconds = std::clamp<int64_t>(std::llround(60e6 / song.fQuartersPerMinute), 1,
                                                  (int64_t{1} << 24) - 1);
    SEvent tempo{0, {0xFF, 0x51, 3}};
    PutBig(tempo.fBytes, static_cast<uint64_t>(microseconds), 3);
    events.push_back(tempo);
    const auto denominator = static_cast<uint32_t>(song.fDenominator);
    if (std::has_single_bit(denominator)) {
        events.push_back({0,
                          {0xFF, 0x58, 4, static_cast<uint8_t>(song.fNumerator),
                           static_cast<uint8_t>(std::countr_zero(denominator)), 24, 8}});
    }
    for (const SMidiNote& note : song.fNotes) {
        const auto key = static_cast<uint8_t>(note.fKey);
        const auto channel = static_cast<uint8_t>(note.fChannel);
        events.push_back({note.fStart, {static_cast<uint8_t>(kNoteOn | channel), key, kVelocity}});
        events.push_back({note.fEnd, {static_cast<uint8_t>(kNoteOff | channel), key, 0}});
    }
    // A note that ends where the next begins ends first; settings, 0xFF, come before notes.
    std::stable_sort(events.begin(), events.end(), [](const SEvent& a, const SEvent& b) {
        const auto rank = [](const SEvent& event) {
            const int kind = event.fBytes.front() & 0xF0;
            return kind == 0xF0 ? 0 : (kind == kNoteOff ? 1 : 2);
        };
        return std::tuple(a.fTime, rank(a)) < std::tuple(b.fTime, rank(b));
    });
    return events;
}

} // namespace

std::vector<uint8_t> MidiFileBytes(const SMidiSong& song) {
    std::vector<uint8_t> track;
    int64_t now = 0;
    for (const SEvent& event : EventsOf(song)) {
        PutDelta(track, event.fTime - now);
        now = event.fTime;
        track.insert(track.end(), event.fBytes.begin(), event.fBytes.end());
    }
    PutDelta(track, std::max<int64_t>(song.fLength - now, 0));
    PutBig(track, 0xFF2F00, 3);
    std::vector<uint8_t> bytes;
    PutText(bytes, "MThd");
    PutBig(bytes, 6, 4);
    PutBig(bytes, 0, 2);
    PutBig(bytes, 1, 2);
    PutBig(bytes, LOP_PPQ, 2);
    PutText(bytes, "MTrk");
    PutBig(bytes, track.size(), 4);
    bytes.insert(bytes.end(), track.begin(), track.end());
    return bytes;
}

} // namespace NSLoopTool
