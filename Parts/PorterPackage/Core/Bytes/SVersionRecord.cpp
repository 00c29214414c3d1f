#include "PorterPackage/Core/Bytes/SVersionRecord.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <algorithm>
#include <array>
#include <compare>

namespace NSPorter {

namespace {

constexpr uint8_t kVersionMagic = 188;
constexpr int64_t kShortFormSize = 5;
constexpr int64_t kLongFormRest = 24;
// Stands in the place of a short form's numbers when the long form follows.
constexpr uint8_t kWideNumbersMark = 255;

} // namespace

std::weak_ordering CompareVersions(const SVersionRecord& a, const SVersionRecord& b) {
    const std::array upperA = {a.fMajor, a.fMinor, a.fBugFix, static_cast<uint32_t>(a.fStage)};
    const std::array upperB = {b.fMajor, b.fMinor, b.fBugFix, static_cast<uint32_t>(b.fStage)};
    const auto [atA, atB] = std::mismatch(upperA.begin(), upperA.end(), upperB.begin());
    if (atA != upperA.end()) {
        return *atA <=> *atB;
    }
    const bool isFinal = a.fStage == kVersionStage_Final;
    if (isFinal && (a.fBuild == 0) != (b.fBuild == 0)) {
        return a.fBuild == 0 ? std::weak_ordering::greater : std::weak_ordering::less;
    }
    return a.fBuild <=> b.fBuild;
}

bool IsSameVersion(const SVersionRecord& a, const SVersionRecord& b) {
    return CompareVersions(a, b) == std::weak_ordering::equivalent;
}

bool IsAtLeast(const SVersionRecord& a, const SVersionRecord& min) {
    return CompareVersions(a, min) != std::weak_ordering::less;
}

bool IsInRange(const SVersionRecord& a, const SVersionRecord& min, const SVersionRecord& max) {
    return IsAtLeast(a, min) && a.fMajor <= max.fMajor;
}

bool MajorsEqual(const SVersionRecord& a, const SVersionRecord& b) {
    return a.fMajor == b.fMajor;
}

SVersionRecord ReadVersionRecord(CMedia& media) {
    CheckFormat(media.BytesLeft() >= kShortFormSize);
    std::array<uint8_t, kShortFormSize> head{};
    media.Read(kShortFormSize, head.data());
    CheckFormat(head[0] == kVersionMagic);

    SVersionRecord version;
    if (std::any_of(head.begin() + 1, head.end(),
                    [](uint8_t b) { return b != kWideNumbersMark; })) {
        version.fMajor = head[1];
        version.fMinor = head[2];
        version.fBugFix = head[3];
        return version;
    }
    CheckFormat(media.BytesLeft() >= kLongFormRest);
    for (uint32_t* field : {&version.fMajor, &version.fMinor, &version.fBugFix, &version.fStage,
                            &version.fBuild, &version.fExtra}) {
        *field = media.ReadU32();
    }
    CheckFormat(version.fStage >= kVersionStage_Development &&
                version.fStage <= kVersionStage_Final);
    return version;
}

void WriteVersionRecord(CMedia& media, const SVersionRecord& version) {
    const bool isPlain =
        version.fStage == kVersionStage_Final && version.fBuild == 0 && version.fExtra == 0;
    media.WriteU8(kVersionMagic);
    if (isPlain && std::max({version.fMajor, version.fMinor, version.fBugFix}) < kWideNumbersMark) {
        media.WriteU8(version.fMajor);
        media.WriteU8(version.fMinor);
        media.WriteU8(version.fBugFix);
        media.WriteU8(0);
        return;
    }
    media.WriteU32(0xFFFFFFFF);
    for (const uint32_t field : {version.fMajor, version.fMinor, version.fBugFix, version.fStage,
                                 version.fBuild, version.fExtra}) {
        media.WriteU32(field);
    }
}

} // namespace NSPorter
