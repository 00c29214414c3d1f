#include "PorterPackage/Core/Bytes/CountedStrings.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"
#include "Text/CodePage.h"
#include "Text/UnicodeConversion.h"

namespace NSPorter {

namespace {

constexpr uint32_t kLongFormMark = 0xFFFFFFFF;
constexpr uint32_t kLongFormMajor = 1;
constexpr char16_t kParagraphSeparator = 0x2029;

// A length field that is cut off is an ordinary read beyond the end, which a media without a limit
// of its own does not notice.
uint32_t ReadLength(CMedia& media) {
    if (media.BytesLeft() < 4) {
        NSLichen::Raise(NSLichen::XRead(""));
    }
    return media.ReadU32();
}

std::string ReadText(CMedia& media, uint32_t count) {
    CheckFormat(count <= media.BytesLeft());
    std::string bytes(count, '\0');
    media.Read(count, reinterpret_cast<uint8_t*>(bytes.data()));
    return bytes;
}

std::string ReadTerminatedText(CMedia& media, uint32_t count) {
    std::string bytes = ReadText(media, count);
    bytes.resize(bytes.find('\0') == std::string::npos ? bytes.size() : bytes.find('\0'));
    return bytes;
}

void WriteText(CMedia& media, const std::string& bytes) {
    media.WriteU32(static_cast<uint32_t>(bytes.size()));
    media.Write(static_cast<int64_t>(bytes.size()), reinterpret_cast<const uint8_t*>(bytes.data()));
}

std::u16string NormalizeLineEnds(const std::u16string& text) {
    std::u16string result;
    result.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isReturn = text[i] == u'\r';
        result += isReturn || text[i] == u'\n' ? kParagraphSeparator : text[i];
        if (isReturn && i + 1 < text.size() && text[i + 1] == u'\n') {
            ++i;
        }
    }
    return result;
}

} // namespace

std::u16string ReadCountedString(CMedia& media) {
    const uint32_t length = ReadLength(media);
    if (length != kLongFormMark) {
        return NormalizeLineEnds(NSTextPackage::Cp1252ToUtf16(ReadTerminatedText(media, length)));
    }
    if (ReadVersionRecord(media).fMajor != kLongFormMajor) {
        NSLichen::Raise(NSLichen::XUnsupportedFormat(""));
    }
    const uint32_t count = ReadLength(media);
    return NSTextPackage::Utf8ToUtf16Default(ReadTerminatedText(media, count));
}

void WriteCountedString(CMedia& media, const std::u16string& text) {
    const std::string narrow = NSTextPackage::Utf16ToCp1252(text, '?');
    if (NSTextPackage::Cp1252ToUtf16(narrow) == text) {
        WriteText(media, narrow);
        return;
    }
    const std::string bytes = NSTextPackage::Utf16ToUtf8(text);
    media.WriteU32(kLongFormMark);
    WriteVersionRecord(media, {.fMajor = kLongFormMajor});
    WriteText(media, bytes);
}

std::u16string ReadUTF8String(CMedia& media) {
    const uint32_t count = ReadLength(media);
    CheckFormat(count < kUTF8StringLimit);
    return NSTextPackage::Utf8ToUtf16Default(ReadText(media, count));
}

void WriteUTF8String(CMedia& media, const std::u16string& text) {
    const std::string bytes = NSTextPackage::Utf16ToUtf8(text);
    CheckFormat(bytes.size() < kUTF8StringLimit);
    WriteText(media, bytes);
}

} // namespace NSPorter
