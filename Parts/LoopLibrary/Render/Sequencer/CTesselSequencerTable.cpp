#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "Failure/Raising/Raise.h"
#include "LoopLibrary/Render/Slices/BuildSlicePlayRanges.h"

#include <stdexcept>
#include <utility>

// The slice table of a sequencer. The render thread only ever tries the table mutex, so it is held
// here for a look or an exchange of pointers and never while a table is built or freed.
namespace NSLOPDLL {

void CTesselSequencer::SetSliceSequence(CSliceSequence* sequence) {
    fSliceSequence = sequence;
    RebuildSliceTable();
}

void CTesselSequencer::RebuildSliceTable() {
    if (fSliceSequence == nullptr) {
        return;
    }
    SetSliceTable(BuildSlicePlayRanges(*fWaveSample, *fSliceSequence, fDropMuted, IsTempoSynced()));
}

void CTesselSequencer::SetSliceTable(std::unique_ptr<std::vector<CSlicePlayRange>> table) {
    Change([&] {
        const NSSupport::CMutexLock tableLock(fTableMutex);
        fSliceTable.swap(table);
    });
}

const CSlicePlayRange& CTesselSequencer::TableEntry(uint32_t index) const {
    if (!HasTable() || index >= fSliceTable->size()) {
        NSLichen::Raise(std::out_of_range("invalid vector<T> subscript"));
    }
    return (*fSliceTable)[index];
}

CSlicePlayRange CTesselSequencer::GetSlicePlayRange(uint32_t index) const {
    const NSSupport::CMutexLock lock(fTableMutex);
    return TableEntry(index);
}

uint32_t CTesselSequencer::GetSliceCount() const {
    const NSSupport::CMutexLock lock(fTableMutex);
    return HasTable() ? static_cast<uint32_t>(fSliceTable->size()) : 0;
}

bool CTesselSequencer::HasSlices() const {
    return GetSliceCount() != 0;
}

} // namespace NSLOPDLL
