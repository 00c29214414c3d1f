// The operations of CTesselFile on a LOP2 file. Where several things are wrong with a file, the
// order in which the chunks are read decides which failure is raised.
#pragma once

#include <memory>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2CreatorInfoChunk;
class CLOP2DecompressCallback;
class CSliceSequence;
class CTesselSequencer;
struct CTesselEditSettings;
struct CTesselFileInfo;

/// As CTesselFile says.
void ReadLOP2FileInfo(NSPorter::CMedia& media, CTesselFileInfo& info);
std::unique_ptr<CABCWaveSample> ReadLOP2WaveSample(NSPorter::CMedia& media,
                                                   CLOP2DecompressCallback& callback);
void ReadLOP2Slices(NSPorter::CMedia& media, CSliceSequence& sequence);
void ReadLOP2SequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer);
void ReadLOP2EditSettings(NSPorter::CMedia& media, CTesselEditSettings& settings);
std::unique_ptr<CLOP2CreatorInfoChunk> ReadLOP2CreatorInfo(NSPorter::CMedia& media);

} // namespace NSLOPDLL
