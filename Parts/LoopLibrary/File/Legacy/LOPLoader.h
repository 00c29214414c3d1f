// The operations of CTesselFile on a .lop file: an AIFF file of 16-bit mono audio that holds pieces
// one after the other, whose application chunk places each on a musical grid. It stores no edit
// settings.
#pragma once

#include <memory>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2DecompressCallback;
class CSliceSequence;
class CTesselSequencer;
struct CTesselFileInfo;

/// As CTesselFile says.
void ReadLOPFileInfo(NSPorter::CMedia& media, CTesselFileInfo& info);
std::unique_ptr<CABCWaveSample> ReadLOPWaveSample(NSPorter::CMedia& media,
                                                  CLOP2DecompressCallback& callback);
void ReadLOPSlices(NSPorter::CMedia& media, CSliceSequence& sequence);
void ReadLOPSequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer);

} // namespace NSLOPDLL
