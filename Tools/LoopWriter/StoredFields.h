#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace NSLoopWriter {

/// A version record as it is stored, 5 or 29 bytes. Any values may be written, valid or not.
struct SStoredVersion {
    enum class EForm {
        kShortest, // short where that loses nothing
        kShort,    // the low bytes of major, minor and bugfix; stage, build and extra are lost
        kLong
    };

    uint32_t fMajor = 0;
    uint32_t fMinor = 0;
    uint32_t fBugFix = 0;
    uint32_t fStage = 4;
    uint32_t fBuild = 0;
    uint32_t fExtra = 0;
    EForm fForm = EForm::kShortest;
};

/// A counted string as it is stored.
struct SStoredText {
    enum class EForm {
        kShortest, // plain where code page 1252 holds the text
        kPlain,    // code page 1252, "?" for what it lacks
        kLong      // UTF-8 behind a version record
    };

    std::u16string fText;
    EForm fForm = EForm::kShortest;
    /// The encoded bytes instead of those of `fText`, in any form.
    std::optional<std::vector<uint8_t>> fRawBytes = std::nullopt;
};

/// Write a field at the cursor.
void WriteStoredVersion(NSPorter::CMedia& media, const SStoredVersion& version);
void WriteStoredText(NSPorter::CMedia& media, const SStoredText& text);

} // namespace NSLoopWriter
