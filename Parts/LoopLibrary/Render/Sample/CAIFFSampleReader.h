// Reads what an AIFF file tells about its audio, and finds its samples.
//
// Sound that can be read is read: broken "INST" and "MARK" chunks cost the loop points and nothing
// more, while faults in "COMM" and "SSND" end the load. All failures here carry an empty text.
#pragma once

#include "LoopLibrary/Render/Sample/CAIFFChunks.h"
#include "LoopLibrary/Render/Sample/CWaveSampleInfo.h"
#include "PorterPackage/Core/IFF/CIFFReader.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

/// The media holds the whole file. Raises XFormatViolation for a missing, short or senseless
/// "COMM", a sample rate outside 1 to 2^31 - 1 among it, and XUnsupportedFormat for compressed
/// audio and for depths other than 8, 16, 20, 22 and 24. The loop points lie within the frames, or
/// there are none.
void ReadAIFFSampleInfo(CWaveSampleInfo& info, NSPorter::CMedia& media);

/// The "INST" and "MARK" part of the above, with the loop points as the file states them. Without
/// an "INST" the record stays as it is. Unsound chunks raise XFormatViolation; the record is then
/// partly filled.
void ReadAIFFLoopInfo(NSPorter::CIFFReader& reader, CWaveLoopInfo& loopInfo);

/// Leaves the media at the first sample of "SSND". Raises XFormatViolation when the chunk is
/// missing or claims fewer bytes than the frames of `info` take. The claim is not held against the
/// length of the media: ReadSamples does that lot by lot.
SAIFFSoundData EnterAIFFSoundData(NSPorter::CIFFReader& reader, const CWaveSampleInfo& info);

} // namespace NSLOPDLL
