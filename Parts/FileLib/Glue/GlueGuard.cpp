#include "FileLib/Glue/GlueGuard.h"

#include "Text/CodeUnits.h"
#include "Text/TextTools.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace NSFileLibInternals {

namespace {

using namespace NSFileLib;

constexpr size_t kLongestText = kFileLibTextUnits - 1;

} // namespace

int32_t CurrentExceptionStatus() noexcept {
    try {
        return GetCurrentExceptionCode(NSLichen::CFailureSite());
    } catch (...) {
        return kFileLibStatus_RuntimeError;
    }
}

int32_t CheckCall(int32_t isValid, std::initializer_list<const void*> pointers) noexcept {
    if (isValid == 0) {
        return kFileLibStatus_Invariant;
    }
    const bool complete = std::find(pointers.begin(), pointers.end(), nullptr) == pointers.end();
    return complete ? kFileLibStatus_OK : kFileLibStatus_BadArgument;
}

int32_t CheckTransfer(int32_t isValid, int64_t position, int64_t count,
                      const uint8_t* buffer) noexcept {
    const int32_t check = CheckCall(isValid, {buffer});
    return check == kFileLibStatus_OK && (position < 0 || count < 0) ? kFileLibStatus_BadArgument
                                                                     : check;
}

void PutUnfinished(char16_t* text) noexcept {
    std::memcpy(text, u"666", sizeof u"666");
}

void PutUnfinished(char* text) noexcept {
    std::memcpy(text, "666", sizeof "666");
}

void PutUnfinished(int32_t* value) noexcept {
    *value = kFileLibUnfinished;
}

void PutUnfinished(int64_t* value) noexcept {
    *value = kFileLibUnfinished;
}

void PutUnfinished(NSFileLib::SFileInfo* info) noexcept {
    constexpr int32_t kMark = kFileLibUnfinished;
    *info = {kMark, kMark, kMark, kMark, kMark, kMark, kMark, kMark};
}

void PutUnfinished(NSFileLib::SVolumeInfo* info) noexcept {
    PutUnfinished(info->fLabel);
    PutUnfinished(info->fFileSystem);
    info->fSerialNumber = kFileLibUnfinished;
    info->fMaxComponentLength = kFileLibUnfinished;
    info->fFlags = kFileLibUnfinished;
}

void PutFlag(int32_t* flag, bool value) noexcept {
    *flag = value ? 1 : 0;
}

void PutText(char16_t* buffer, const std::u16string& text) {
    size_t count = std::min(text.size(), kLongestText);
    if (count > 0 && NSTextPackage::IsPairAt(text, count - 1)) {
        --count;
    }
    NSTextPackage::CopyToBuffer(buffer, text, count);
}

void PutText(char* buffer, const std::string& utf8) {
    size_t count = std::min(utf8.size(), kLongestText);
    while (count > 0 && count < utf8.size() && NSTextPackage::IsContinuationByte(utf8[count])) {
        --count;
    }
    std::memcpy(buffer, utf8.data(), count);
    buffer[count] = '\0';
}

std::u16string TakeText(const char16_t* buffer) {
    const char16_t* const end = std::find(buffer, buffer + kLongestText, u'\0');
    return std::u16string(buffer, end);
}

} // namespace NSFileLibInternals
