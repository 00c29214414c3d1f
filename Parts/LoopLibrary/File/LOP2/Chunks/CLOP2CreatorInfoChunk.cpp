#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Bytes/CountedStrings.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2CreatorInfoChunk::CLOP2CreatorInfoChunk(NSPorter::CMedia& media) {
    for (std::u16string& text : fTexts) {
        text = NSPorter::ReadCountedString(media);
    }
    for (const std::u16string& text : fTexts) {
        if (text.size() > kTextLimit) {
            RaiseFormatViolation("invalid data in creator info chunk");
        }
    }
}

} // namespace NSLOPDLL
