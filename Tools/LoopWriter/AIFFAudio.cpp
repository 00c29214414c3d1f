#include "LoopWriter/AIFFAudio.h"

#include "LoopLibrary/Render/Sample/CAIFFSampleWriter.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <algorithm>
#include <utility>

namespace NSLoopWriter {

namespace {

using NSPorter::FourCharID;

constexpr ptrdiff_t kHeaderSize = 8;

// The body of the one chunk that `write` puts out whole, header and pad byte taken off.
template <class Write>
SIFFChunk Capture(uint32_t id, Write write) {
    NSPorter::COwnedMemoryMedia media;
    NSPorter::CIFFWriter writer(&media);
    writer.SetUnpadded();
    write(writer);
    return MakeSimpleChunk(id,
                           {media.GetData() + kHeaderSize, media.GetData() + media.GetLength()});
}

SIFFChunk BuildCommon(const SAIFFAudio& audio) {
    NSLOPDLL::CAIFFCommonChunk common = audio.fCommon;
    const size_t channels = std::max<size_t>(common.fChannels, 1);
    common.fFrames =
        audio.fFrames.value_or(static_cast<uint32_t>(audio.fSamples.size() / channels));
    return Capture(FourCharID("COMM"), [&](auto& writer) { common.Write(writer); });
}

void AppendSamples(const SAIFFAudio& audio, std::vector<uint8_t>& bytes) {
    for (const int32_t sample : audio.fSamples) {
        for (int32_t shift = (audio.fCommon.fBits + 7) / 8 * 8 - 8; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<uint8_t>(sample >> std::min(shift, 31)));
        }
    }
}

SIFFChunk BuildSoundData(const SAIFFAudio& audio) {
    const NSLOPDLL::SAIFFSoundData& head = audio.fSoundData;
    SIFFChunk chunk = Capture(FourCharID("SSND"), [&](auto& writer) {
        NSLOPDLL::BeginAIFFSoundData(writer, audio.fRawSoundData ? 0 : head.fOffset,
                                     head.fBlockSize);
        writer.EndChunk();
    });
    if (audio.fRawSoundData) {
        NSPorter::EncodeBigEndian(head.fOffset, chunk.fBody.data());
        chunk.fBody.insert(chunk.fBody.end(), audio.fRawSoundData->begin(),
                           audio.fRawSoundData->end());
    } else {
        AppendSamples(audio, chunk.fBody);
    }
    return chunk;
}

} // namespace

void SAIFFAudio::SetLoop(uint32_t start, uint32_t end) {
    fMarkers.emplace();
    fMarkers->fMarkers = {{1, start, "Loop Start"}, {2, end, "Loop End"}};
    fInstrument.emplace();
    fInstrument->fSustainLoop = {1, 1, 2};
}

SIFFChunk BuildAIFFChunks(const SAIFFAudio& audio, uint32_t signature,
                          const std::vector<uint8_t>& applicationData) {
    std::vector<uint8_t> application(4);
    NSPorter::EncodeBigEndian(signature, application.data());
    application.insert(application.end(), applicationData.begin(), applicationData.end());

    std::vector<SIFFChunk> chunks = {BuildCommon(audio)};
    chunks.push_back(MakeSimpleChunk(FourCharID("APPL"), std::move(application)));
    if (audio.fMarkers) {
        chunks.push_back(
            Capture(FourCharID("MARK"), [&](auto& writer) { audio.fMarkers->Write(writer); }));
    }
    if (audio.fInstrument) {
        chunks.push_back(
            Capture(FourCharID("INST"), [&](auto& writer) { audio.fInstrument->Write(writer); }));
    }
    chunks.push_back(BuildSoundData(audio));
    return MakeGroup(SIFFChunk::EKind::kForm, FourCharID("AIFF"), std::move(chunks));
}

} // namespace NSLoopWriter
