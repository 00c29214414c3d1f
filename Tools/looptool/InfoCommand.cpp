#include "looptool/CLoop.h"
#include "looptool/Commands.h"

#include <cstdio>
#include <nlohmann/json.hpp>

namespace NSLoopTool {

namespace {

double BeatsPerMinute(int32_t thousandths) {
    return thousandths / 1000.0;
}

double QuarterNotes(int32_t pulses) {
    return static_cast<double>(pulses) / LOP_PPQ;
}

void PrintJson(const CLoop& loop) {
    const LOPInfo info = loop.GetInfo();
    const nlohmann::ordered_json json = {
        {"file", loop.GetPath()},
        {"channels", info.fChannels},
        {"sample_rate", info.fSampleRate},
        {"bit_depth", info.fBitDepth},
        {"slice_count", info.fSliceCount},
        {"stored_tempo", BeatsPerMinute(info.fStoredTempo)},
        {"loop_tempo", BeatsPerMinute(info.fLoopTempo)},
        {"length_ppq", info.fPPQLength},
        {"time_signature", {info.fTimeSignatureNumerator, info.fTimeSignatureDenominator}},
        {"creator_texts", loop.GetCreatorTexts()},
    };
    // Names and texts that are no UTF-8 must not stop the output.
    std::puts(json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

void PrintText(const CLoop& loop) {
    const LOPInfo info = loop.GetInfo();
    std::printf("File:           %s\n", loop.GetPath().c_str());
    std::printf("Audio:          %s, %d Hz, %d bits\n", info.fChannels == 2 ? "stereo" : "mono",
                info.fSampleRate, info.fBitDepth);
    std::printf("Slices:         %d\n", info.fSliceCount);
    std::printf("Stored tempo:   %.3f BPM\n", BeatsPerMinute(info.fStoredTempo));
    std::printf("Loop tempo:     %.3f BPM\n", BeatsPerMinute(info.fLoopTempo));
    std::printf("Length:         %.3f quarter notes\n", QuarterNotes(info.fPPQLength));
    std::printf("Time signature: %d/%d\n", info.fTimeSignatureNumerator,
                info.fTimeSignatureDenominator);
    for (const std::string& text : loop.GetCreatorTexts()) {
        if (!text.empty()) {
            std::printf("Creator text:   %s\n", text.c_str());
        }
    }
}

} // namespace

void RunInfo(const SInfoOptions& options) {
    const CLoop loop(options.fFile);
    options.fJson ? PrintJson(loop) : PrintText(loop);
}

void RunSlices(const SInfoOptions& options) {
    const CLoop loop(options.fFile);
    const int32_t count = loop.GetInfo().fSliceCount;
    nlohmann::ordered_json json = nlohmann::json::array();
    if (!options.fJson) {
        std::printf("%6s %12s %12s\n", "slice", "quarter note", "frames");
    }
    for (int32_t i = 0; i < count; ++i) {
        const LOPSliceInfo slice = loop.GetSliceInfo(i);
        if (options.fJson) {
            json.push_back({{"slice", i},
                            {"position_ppq", slice.fPPQPosition},
                            {"frame_count", slice.fFrameCount}});
        } else {
            std::printf("%6d %12.4f %12d\n", i, QuarterNotes(slice.fPPQPosition),
                        slice.fFrameCount);
        }
    }
    if (options.fJson) {
        std::puts(json.dump(2).c_str());
    }
}

} // namespace NSLoopTool
