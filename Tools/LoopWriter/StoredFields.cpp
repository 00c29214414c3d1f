#include "LoopWriter/StoredFields.h"

#include "PorterPackage/Core/Bytes/SVersionRecord.h"
#include "Text/CodePage.h"
#include "Text/UnicodeConversion.h"

namespace NSLoopWriter {

namespace {

// The same in versions and in texts.
constexpr uint32_t kLongFormMark = 0xFFFFFFFF;
constexpr uint32_t kVersionMark = 188;

bool FitsShortForm(const SStoredVersion& version) {
    return version.fStage == NSPorter::kVersionStage_Final && version.fBuild == 0 &&
           version.fExtra == 0 && version.fMajor < 255 && version.fMinor < 255 &&
           version.fBugFix < 255;
}

} // namespace

void WriteStoredVersion(NSPorter::CMedia& media, const SStoredVersion& version) {
    media.WriteU8(kVersionMark);
    if (version.fForm == SStoredVersion::EForm::kShort ||
        (version.fForm == SStoredVersion::EForm::kShortest && FitsShortForm(version))) {
        media.WriteU8(version.fMajor);
        media.WriteU8(version.fMinor);
        media.WriteU8(version.fBugFix);
        media.WriteU8(0);
        return;
    }
    media.WriteU32(kLongFormMark);
    for (const uint32_t value : {version.fMajor, version.fMinor, version.fBugFix, version.fStage,
                                 version.fBuild, version.fExtra}) {
        media.WriteU32(value);
    }
}

void WriteStoredText(NSPorter::CMedia& media, const SStoredText& text) {
    std::string bytes = NSTextPackage::Utf16ToCp1252(text.fText, '?');
    const bool isLong = text.fForm == SStoredText::EForm::kLong ||
                        (text.fForm == SStoredText::EForm::kShortest &&
                         NSTextPackage::Cp1252ToUtf16(bytes) != text.fText);
    if (isLong) {
        bytes = NSTextPackage::Utf16ToUtf8(text.fText);
        media.WriteU32(kLongFormMark);
        WriteStoredVersion(media, {1});
    }
    if (text.fRawBytes) {
        bytes.assign(text.fRawBytes->begin(), text.fRawBytes->end());
    }
    media.WriteU32(static_cast<uint32_t>(bytes.size()));
    media.Write(static_cast<int64_t>(bytes.size()), reinterpret_cast<const uint8_t*>(bytes.data()));
}

} // namespace NSLoopWriter
