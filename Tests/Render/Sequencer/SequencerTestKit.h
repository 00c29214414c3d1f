#pragma once

#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"
#include "Tests/Render/RenderTestTools.h"

#include <algorithm>
#include <functional>
#include <map>

namespace NSLOPDLL {

using SliceTable = std::vector<CSlicePlayRange>;
// What is done to a sampler, by the block at whose head it is done.
using SamplerAction = std::function<void(CTesselSampler&)>;
using SamplerActions = std::multimap<int64_t, SamplerAction>;

inline SamplerAction Range(const CSlicePlayRange& range) {
    return [range](CTesselSampler& sampler) { sampler.StartRange(range); };
}
inline SamplerAction FreeRun(int32_t frame) {
    return [frame](CTesselSampler& sampler) { sampler.StartFreeRun(frame); };
}

// Ranges that touch each other, without tails.
inline SliceTable MakeTable(const std::vector<int32_t>& starts, int32_t frameCount) {
    SliceTable table;
    for (size_t i = 0; i < starts.size(); ++i) {
        const int32_t end = i + 1 < starts.size() ? starts[i + 1] : frameCount;
        table.push_back({starts[i], end, starts[i], end, 1.0f});
    }
    return table;
}

// A bar of 4/4 in 2 seconds, cut into beats: its own tempo is 120.
constexpr int32_t kBarFrames = 88200;

struct SBarLoop {
    std::unique_ptr<CABCWaveSample> fSample = MakeNoiseSample(44100, kBarFrames, false, 16);
    SliceTable fTable;
    CTesselSequencer fSequencer{fSample.get()};

    explicit SBarLoop(int32_t tempo = 120000, bool synced = true,
                      const std::vector<int32_t>& starts = {0, 22050, 44100, 66150})
        : fTable(MakeTable(starts, kBarFrames)) {
        fSequencer.SetBeats(4);
        fSequencer.SetTempo(tempo);
        fSequencer.SetTempoSync(synced);
        SetTable(fTable);
        fSequencer.ResetPosition();
    }
    void SetTable(const SliceTable& table) {
        fSequencer.SetSliceTable(std::make_unique<SliceTable>(table));
    }
};

inline CTriggerPlan Plan(const CTesselSequencer& sequencer) {
    return sequencer.GetPlayFields().fClock.GetPlan();
}

// The left side of `blocks` blocks, asked for in calls of `batch` frames.
inline std::vector<float> RenderBlocks(CTesselSequencer& sequencer, int32_t blocks,
                                       int32_t batch = 640) {
    const int32_t total = blocks * kBlockFrames;
    std::vector<float> left(static_cast<size_t>(total));
    std::vector<float> right(left.size());
    for (int32_t done = 0; done < total; done += batch) {
        sequencer.Render({left.data() + done, right.data() + done}, std::min(batch, total - done));
    }
    return left;
}

// The sound of a bare sampler on the same sample.
inline std::vector<float> SamplerAudio(const CTesselSequencer& like, int32_t blocks,
                                       const SamplerActions& actions) {
    CTesselSampler sampler(&like.GetWaveSample(), like.GetOutputRate());
    std::vector<float> left(static_cast<size_t>(blocks) * kBlockFrames);
    float right[kBlockFrames];
    for (int32_t block = 0; block < blocks; ++block) {
        const auto [first, last] = actions.equal_range(block);
        std::for_each(first, last, [&](const auto& action) { action.second(sampler); });
        sampler.RenderBlock({left.data() + ptrdiff_t{block} * kBlockFrames, right});
    }
    return left;
}

} // namespace NSLOPDLL
