// Where a preview is in its loop: the library alone knows when its next slice begins, since it
// rounds the times of slices, and with them the length of each pass, to its blocks.
#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/LoopHandles.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <algorithm>

namespace {

/// At the head of the block that was begun last: 0 at the loop's start, 1 at its end. Negative
/// while no slices are triggered.
double PlaceOf(const NSLOPDLL::CTesselSequencer& sequencer) {
    const NSLOPDLL::CSequencerPlayFields play = sequencer.GetPlayFields();
    const NSLOPDLL::CTriggerPlan& plan = play.fClock.GetPlan();
    const double loopStart = sequencer.GetWaveSample().GetLoopStart();
    const int32_t loopFrames =
        sequencer.GetWaveSample().GetLoopEnd() - sequencer.GetWaveSample().GetLoopStart();
    const int32_t outputFrames = sequencer.FramesToOutput(loopFrames);
    if (play.fPlayState != NSLOPDLL::kPlayState_Running || !sequencer.HasSlices() ||
        outputFrames < 1) {
        return -1;
    }
    const double current = (plan.fCurrentStart - loopStart) / loopFrames;
    const double ahead = plan.fNextStart > plan.fCurrentStart ? 0 : 1;
    const double next = (plan.fNextStart - loopStart) / loopFrames + ahead;
    const double left = static_cast<double>(plan.fFramesToNext) / outputFrames;
    return std::clamp(std::max(next - left, current), 0.0, 1.0);
}

} // namespace

/// `handle` stands for an open loop. The place in parts of 2^29: a number that engines hand to
/// JavaScript without an allocation.
extern "C" __attribute__((used, visibility("default"), export_name("getPreviewPlace"))) int32_t
LoopModuleGetPreviewPlace(LOPHandle handle) {
    return static_cast<int32_t>(PlaceOf(NSLOPDLL::ObjectFromHandle(handle)->GetSequencer()) *
                                (1 << 29));
}
