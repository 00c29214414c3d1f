#include "looptool/Loop/LoopHeader.h"

#include "looptool/Loop/CreatorLines.h"
#include "looptool/Loop/LoopSettings.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace NSLoopTool {

namespace {

std::string FirstText(const NSLOPDLL::CTesselFile& file) {
    const auto texts = file.ReadCreatorInfo();
    if (texts == nullptr) {
        return "";
    }
    for (const std::u16string* text : {&texts->GetText1(), &texts->GetText2(), &texts->GetText3(),
                                       &texts->GetText4(), &texts->GetText5()}) {
        if (!text->empty()) {
            return CreatorLines(NSTextPackage::Utf16ToUtf8(*text));
        }
    }
    return "";
}

// What the public record lacks.
void AddFromInside(NSPorter::CMedia& media, SLoopHeader& header) {
    const NSLOPDLL::CTesselFile file(&media);
    NSLOPDLL::CTesselFileInfo info;
    file.GetFileInfo(info);
    header.fBars = info.fBars;
    header.fBeats = info.fBeats;
    header.fSeconds = static_cast<double>(info.fWaveSampleInfo.fFrames) /
                      std::max(info.fWaveSampleInfo.fSampleRate, 1);
    if (header.fKind == kKind_LOP2) {
        header.fFirstText = FirstText(file);
    }
}

} // namespace

SLoopHeader ReadLoopHeader(std::span<const uint8_t> bytes) {
    constexpr size_t kMost = std::numeric_limits<int32_t>::max();
    const std::span<const uint8_t> head = bytes.first(std::min(bytes.size(), kMost));
    NSPorter::CMemoryMedia media(static_cast<int64_t>(head.size()), head.data());
    SLoopHeader header;
    header.fKind = KindOfMedia(media);
    if (header.fKind.empty()) {
        return header;
    }
    header.fResult = LOPGetInfoFromBuffer(static_cast<int32_t>(head.size()), head.data(),
                                          static_cast<int32_t>(sizeof header.fInfo), &header.fInfo);
    if (header.fResult == kLOPResult_OK) {
        try {
            AddFromInside(media, header);
        } catch (const std::exception&) {
            header.fFirstText.clear(); // a damaged text alone
        }
    }
    return header;
}

} // namespace NSLoopTool
