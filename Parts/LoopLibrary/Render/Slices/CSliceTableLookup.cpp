#include "LoopLibrary/Render/Slices/CSliceTableLookup.h"

#include <algorithm>

namespace NSLOPDLL {

size_t CSliceTableLookup::FindRange(std::span<const CSlicePlayRange> table,
                                    int32_t position) noexcept {
    const auto behind = std::upper_bound(
        table.begin(), table.end(), position,
        [](int32_t value, const CSlicePlayRange& range) { return value < range.fStart; });
    return behind == table.begin() ? 0 : static_cast<size_t>(behind - table.begin()) - 1;
}

size_t CSliceTableLookup::FindLoopEntry() const noexcept {
    const size_t entry = FindRange(fLoopStart);
    const bool isBefore = fTable[entry].fStart < fLoopStart;
    return isBefore && entry + 1 < fTable.size() ? entry + 1 : entry;
}

size_t CSliceTableLookup::FindNextRange(int32_t position) const noexcept {
    const size_t entry = FindRange(position);
    const size_t next = position >= fTable[entry].fStart ? entry + 1 : entry;
    if (position < fLoopEnd) {
        return NextInLoop(position, next);
    }
    return next < fTable.size() ? next : 0;
}

size_t CSliceTableLookup::NextInLoop(int32_t position, size_t next) const noexcept {
    const size_t loopEntry = FindLoopEntry();
    if (next == fTable.size()) {
        const bool entersLoop = position >= fLoopStart && fTable[loopEntry].fStart >= fLoopStart;
        return entersLoop ? loopEntry : 0;
    }
    return fTable[next].fStart >= fLoopEnd ? loopEntry : next;
}

} // namespace NSLOPDLL
