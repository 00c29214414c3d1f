#include "LoopLibrary/File/CLOP2CreatorInfoChunk.h"

#include "LoopLibrary/File/LoopFileFailures.h"
#include "PorterPackage/Core/CMedia.h"
#include "PorterPackage/Core/CountedStrings.h"

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
