// A version number as files store it.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <compare>
#include <cstdint>

namespace NSPorter {

constexpr uint32_t kVersionStage_Development = 1;
constexpr uint32_t kVersionStage_Alpha = 2;
constexpr uint32_t kVersionStage_Beta = 3;
constexpr uint32_t kVersionStage_Final = 4;

/// The default record, 0.0.0 final, also stands for no version.
struct SVersionRecord {
    uint32_t fMajor = 0;
    uint32_t fMinor = 0;
    uint32_t fBugFix = 0;
    uint32_t fStage = kVersionStage_Final;
    uint32_t fBuild = 0;
    uint32_t fExtra = 0;
};

/// By major, minor, bugfix, stage and build, unsigned; fExtra takes no part, which is why records
/// of different bytes can be equivalent. Of two final releases the one without a build number is
/// the newer.
std::weak_ordering CompareVersions(const SVersionRecord& a, const SVersionRecord& b);

/// Neither is newer.
bool IsSameVersion(const SVersionRecord& a, const SVersionRecord& b);
bool IsAtLeast(const SVersionRecord& a, const SVersionRecord& min);
/// At least `min`, and of no higher major than `max`; the lower parts of `max` do not count.
bool IsInRange(const SVersionRecord& a, const SVersionRecord& min, const SVersionRecord& max);
bool MajorsEqual(const SVersionRecord& a, const SVersionRecord& b);

/// Reads the 5-byte or the 29-byte form. Bytes that are not a version, or too few of them, raise
/// XFormatViolation.
SVersionRecord ReadVersionRecord(CMedia& media);
/// Takes the short form where it can say the same.
void WriteVersionRecord(CMedia& media, const SVersionRecord& version);

} // namespace NSPorter
