// The operations of CTesselFile on a .tsl file: an AIFF file of 16-bit mono audio that holds the
// whole recording, whose application chunk marks the slices on it.
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
struct CTesselEditSettings;
struct CTesselFileInfo;

/// `storedFlag` is set when the file carries the flag, and left alone otherwise.
void ReadTSLFileInfo(NSPorter::CMedia& media, CTesselFileInfo& info, bool& storedFlag);
/// `fileInfo` is what ReadTSLFileInfo gave.
std::unique_ptr<CABCWaveSample> ReadTSLWaveSample(NSPorter::CMedia& media,
                                                  const CTesselFileInfo& fileInfo,
                                                  CLOP2DecompressCallback& callback);
/// As CTesselFile says.
void ReadTSLSlices(NSPorter::CMedia& media, CSliceSequence& sequence);
void ReadTSLSequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer);
void ReadTSLEditSettings(NSPorter::CMedia& media, CTesselEditSettings& settings);

} // namespace NSLOPDLL
