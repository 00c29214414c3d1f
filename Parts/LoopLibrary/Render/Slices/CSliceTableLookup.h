#pragma once

#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "Support/Threads/RealTime.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace NSLOPDLL {

/// Finds the entry of a slice table that sounds at a position, and the one that follows it in a
/// loop. Borrows a table that is sorted by fStart and not empty. Real-time safe; answers are
/// indices.
class CSliceTableLookup {
public:
    CSliceTableLookup(std::span<const CSlicePlayRange> table, int32_t loopStart,
                      int32_t loopEnd) noexcept
        : fTable(table), fLoopStart(loopStart), fLoopEnd(loopEnd) {}

    const CSlicePlayRange& operator[](size_t index) const noexcept LOOP_REALTIME {
        return fTable[index];
    }
    size_t GetCount() const noexcept LOOP_REALTIME { return fTable.size(); }

    /// The last entry that starts at or before `position`, or the first of all.
    static size_t FindRange(std::span<const CSlicePlayRange> table,
                            int32_t position) noexcept LOOP_REALTIME;
    size_t FindRange(int32_t position) const noexcept LOOP_REALTIME {
        return FindRange(fTable, position);
    }
    /// The first entry at or behind the loop start, or the last of all.
    size_t FindLoopEntry() const noexcept LOOP_REALTIME;
    /// Where playing goes on from `position`: round the loop for ever once it is inside; from
    /// behind the loop end to the end of the table and back to its first entry.
    size_t FindNextRange(int32_t position) const noexcept LOOP_REALTIME;

private:
    size_t NextInLoop(int32_t position, size_t next) const noexcept LOOP_REALTIME;

    std::span<const CSlicePlayRange> fTable;
    int32_t fLoopStart;
    int32_t fLoopEnd;
};

} // namespace NSLOPDLL
