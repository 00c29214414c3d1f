#include "Debug/Log/TraceLine.h"

#include "Text/CodeUnits.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace NSDebugPackage {

namespace {

constexpr uint32_t kMostLevels = 100;
constexpr char kLevelText[] = "|  ";

// "230302 123456"
std::string CompactTime(const NSSupport::SCalendarTime& time) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02d%02d%02d %02d%02d%02d", time.fYear % 100,
                  time.fMonth, time.fDay, time.fHour, time.fMinute, time.fSecond);
    return buffer.data();
}

void RemoveLastUnlessAscii(char* text) {
    for (size_t length = std::strlen(text); length > 0; --length) {
        const char last = text[length - 1];
        if (static_cast<uint8_t>(last) < 0x80) {
            return;
        }
        text[length - 1] = '\0';
        if (!NSTextPackage::IsContinuationByte(last)) {
            return;
        }
    }
}

} // namespace

void FormatTraceLine(const NSSupport::SCalendarTime& time, uint32_t thread, uint32_t level,
                     const char* text, TraceLine& line) {
    std::array<char, kMostLevels*(sizeof kLevelText - 1) + 1> indentation{};
    char* end = indentation.data();
    for (uint32_t i = 0; i < std::min(level, kMostLevels); ++i) {
        end = std::copy_n(kLevelText, sizeof kLevelText - 1, end);
    }
    const NSSupport::SCalendarTime local = NSSupport::UtcToLocal(time);
    std::array<char, 64> timeText{};
    std::snprintf(timeText.data(), timeText.size(), "%4d%02d%02d-%02d%02d%02d.%03d", local.fYear,
                  local.fMonth, local.fDay, local.fHour, local.fMinute, local.fSecond,
                  local.fMillisecond);
    std::snprintf(line, kTraceLineSize, "%016" PRIX64 " %s %s", uint64_t{thread}, timeText.data(),
                  indentation.data());

    const size_t used = std::strlen(line);
    const size_t room = kTraceLineSize - 1 - used;
    const size_t count = std::min(std::strlen(text), room);
    std::memcpy(line + used, text, count);
    line[used + count] = '\0';
    RemoveLastUnlessAscii(line);
}

std::string MakeLogFileName(const std::string& base, const std::string& extension,
                            const NSSupport::SCalendarTime& localTime) {
    return base + " " + CompactTime(localTime) + extension;
}

std::string MakeLogFileName(const std::string& base, const std::string& extension) {
    return MakeLogFileName(base, extension, NSSupport::UtcToLocal(NSSupport::GetUtcTime()));
}

std::string MakeMiniDumpName(const std::string& base, int n,
                             const NSSupport::SCalendarTime& localTime) {
    std::array<char, 1024> name{};
    const std::string time = CompactTime(localTime);
    if (n == 1) {
        std::snprintf(name.data(), name.size(), "%s %s minidump.dmp", base.c_str(), time.c_str());
    } else {
        std::snprintf(name.data(), name.size(), "%s %s minidump %d.dmp", base.c_str(), time.c_str(),
                      n);
    }
    return name.data();
}

std::string TrimSourcePath(const std::string& path) {
    const std::string development = "\\Dev\\";
    if (const size_t found = path.find(development); found != std::string::npos) {
        return path.substr(found + development.size());
    }
    const size_t found = path.find("boost\\");
    return found == std::string::npos ? path : path.substr(found);
}

} // namespace NSDebugPackage
