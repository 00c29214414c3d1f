#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <array>
#include <cstddef>
#include <string>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "CREI": five free texts about who made the loop. The format gives them no meaning but their
/// order.
class CLOP2CreatorInfoChunk final : public CABCLOP2Chunk {
public:
    static constexpr size_t kTextCount = 5;
    /// In UTF-16 units, after line ends were made one unit each.
    static constexpr size_t kTextLimit = 255;

    explicit CLOP2CreatorInfoChunk(NSPorter::CMedia& media);

    const std::u16string& GetText1() const { return fTexts[0]; }
    const std::u16string& GetText2() const { return fTexts[1]; }
    const std::u16string& GetText3() const { return fTexts[2]; }
    const std::u16string& GetText4() const { return fTexts[3]; }
    const std::u16string& GetText5() const { return fTexts[4]; }

private:
    std::array<std::u16string, kTextCount> fTexts;
};

} // namespace NSLOPDLL
