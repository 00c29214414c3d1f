#pragma once

#include "LoopLibrary/Render/Exporter/CExportItemInfo.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace NSLOPDLL {

class CABCWaveSample;

/// Renders offline with a sequencer of its own, so a running preview neither hears nor disturbs it.
/// In slice mode an item is one slice inside the loop range, rendered from silence; in loop mode
/// the one item is the loop, with its slices on their places in time.
///
/// The questions may be asked beside an Export; one thread at a time may export or change the rate.
class CExporter {
public:
    /// Copies the sequencer, switches the copy's tempo sync on and sets it to the source rate.
    /// `fadeOutEnd` fades the last 40 frames of a loop export.
    CExporter(const CTesselSequencer& sequencer, bool perSlice, bool fadeOutEnd);
    CExporter(const CExporter&) = delete;
    CExporter& operator=(const CExporter&) = delete;
    virtual ~CExporter();

    uint32_t GetItemCount() const noexcept;
    /// `index` from 0 to the item count minus 1; raises std::out_of_range in slice mode. In loop
    /// mode it is not read.
    CExportItemInfo GetItemInfo(uint32_t index) const;
    /// The item as a new sample of the output rate, with the source's channels and depth. Raises
    /// like GetItemInfo, and std::bad_alloc.
    std::unique_ptr<CABCWaveSample> Export(uint32_t index);
    /// Of all items together.
    uint64_t GetTotalFrameCount() const;

    /// Acts at once. `rate` is clipped to 11025 to 1000000. Raises std::bad_alloc and has then
    /// changed nothing.
    void SetOutputRate(int32_t rate);
    /// The second step of SetOutputRate, which cannot fail: the first is to get the tables.
    void CommitOutputRate(CDSPTablesHandle tables);
    int32_t GetOutputRate() const noexcept { return fSequencer.GetOutputRate(); }
    /// Silence behind every item.
    void SetExtraFrames(uint32_t frames) noexcept { fExtraFrames = frames; }

    int32_t GetTempo() const noexcept { return fSequencer.GetTempo(); }
    int32_t GetLoopTempo() const noexcept { return fSequencer.GetLoopTempo(); }
    int32_t GetTimeSignatureNumerator() const noexcept {
        return fSequencer.GetTimeSignatureNumerator();
    }
    int32_t GetTimeSignatureDenominator() const noexcept {
        return fSequencer.GetTimeSignatureDenominator();
    }
    bool IsStereo() const noexcept;
    bool IsWholeLoop() const noexcept { return !fPerSlice; }

private:
    uint32_t SliceIndex(uint32_t item) const;
    CExportItemInfo GetLoopInfo() const;
    CExportItemInfo GetSliceInfo(uint32_t item) const;
    uint32_t WithExtraFrames(int64_t frames) const noexcept;
    uint32_t FramesToPPQ(double frames) const noexcept;
    int32_t LoopLength() const noexcept;
    /// Output frames from the loop start to a slice of fSliceIndices, rounded to a block.
    int32_t SliceTime(size_t item) const;

    void RenderLoop(CABCWaveSample& target);
    void RenderSlice(CABCWaveSample& target, uint32_t item);
    void RenderBlocks(CABCWaveSample& target, int32_t start, int32_t count);

    CTesselSequencer fSequencer;
    /// Table entries that lie inside the loop range.
    std::vector<uint32_t> fSliceIndices;
    uint32_t fExtraFrames = 0;
    const bool fPerSlice;
    const bool fFadeOutEnd;
};

} // namespace NSLOPDLL
