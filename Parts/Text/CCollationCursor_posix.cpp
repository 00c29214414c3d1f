#include "Text/CCollationCursor.h"

#include "Text/CodeUnits.h"
#include "Text/UnicodeTables.h"

#include <algorithm>

namespace NSTextPackage {

namespace {

constexpr uint32_t kLowerCase = 1;
constexpr uint32_t kUpperCase = 2;

// Every mark's code point lies above these.
constexpr uint32_t kPlainSecondary = 0x20;
constexpr uint32_t kVariantSecondary = 0x21;

// The order of the classes of characters.
constexpr uint32_t kSymbolClass = 0x1000000;
constexpr uint32_t kDigitClass = 0x2000000;
constexpr uint32_t kLetterClass = 0x3000000;

constexpr uint32_t kCyrillicI = 0x0438;
constexpr uint32_t kCyrillicShortI = 0x0439;
constexpr uint32_t kBreve = 0x0306;

// Letters that Unicode does not decompose and readers still look for under their base letters. The
// variant is a mark that shows the difference: the stroke, or just that it is another letter.
struct SExpansion {
    uint16_t fUnit;
    uint16_t fFirst;
    uint16_t fSecond;
    uint16_t fVariant;
};
constexpr std::array<SExpansion, 13> kExpansions = {{
    {0x00DF, 's', 's', kVariantSecondary},
    {0x00E6, 'a', 'e', kVariantSecondary},
    {0x00F0, 'd', 0, kVariantSecondary},
    {0x00F8, 'o', 0, 0x0338},
    {0x00FE, 't', 'h', kVariantSecondary},
    {0x0111, 'd', 0, 0x0335},
    {0x0127, 'h', 0, 0x0335},
    {0x0131, 'i', 0, kVariantSecondary},
    {0x0142, 'l', 0, 0x0335},
    {0x0153, 'o', 'e', kVariantSecondary},
    {0x0167, 't', 0, 0x0335},
    {0x017F, 's', 0, kVariantSecondary},
    {0x03C2, 0x03C3, 0, kVariantSecondary}, // final sigma
}};

struct SRange {
    uint32_t fFirst;
    uint32_t fLast;
};

constexpr std::array<SRange, 6> kMarkRanges = {{{0x0300, 0x036F},
                                                {0x0483, 0x0487},
                                                {0x1AB0, 0x1AFF},
                                                {0x1DC0, 0x1DFF},
                                                {0x20D0, 0x20F0},
                                                {0xFE20, 0xFE2F}}};

// Punctuation, signs and controls; ASCII's are those that are neither digit nor letter.
constexpr std::array<SRange, 9> kSymbolRanges = {{{0x0000, 0x002F},
                                                  {0x003A, 0x0060},
                                                  {0x007B, 0x00A9},
                                                  {0x00AB, 0x00B4},
                                                  {0x00B6, 0x00B9},
                                                  {0x00BB, 0x00BF},
                                                  {0x00D7, 0x00D7},
                                                  {0x00F7, 0x00F7},
                                                  {0x2000, 0x2BFF}}};

template <size_t N>
bool IsIn(const std::array<SRange, N>& ranges, uint32_t codePoint) {
    return std::any_of(ranges.begin(), ranges.end(), [codePoint](const SRange& range) {
        return codePoint >= range.fFirst && codePoint <= range.fLast;
    });
}

uint32_t PrimaryWeight(uint32_t codePoint) {
    if (codePoint >= '0' && codePoint <= '9') {
        return kDigitClass + codePoint;
    }
    const bool isSymbol =
        IsIn(kSymbolRanges, codePoint) || (codePoint >= 0x3000 && codePoint <= 0x303F);
    return (isSymbol ? kSymbolClass : kLetterClass) + codePoint;
}

uint32_t FoldWidth(uint32_t codePoint) {
    if (codePoint >= 0xFF01 && codePoint <= 0xFF5E) {
        return codePoint - 0xFF01 + '!';
    }
    return codePoint == 0x3000 ? ' ' : codePoint;
}

template <class Row>
const Row* FindRow(std::span<const Row> rows, uint32_t codePoint) {
    const auto found =
        std::lower_bound(rows.begin(), rows.end(), codePoint,
                         [](const Row& row, uint32_t value) { return row.fUnit < value; });
    return found != rows.end() && found->fUnit == codePoint ? &*found : nullptr;
}

} // namespace

char16_t LowerUnit(char16_t unit) {
    const std::span<const SCaseRun> runs = CaseRuns();
    const auto behind =
        std::upper_bound(runs.begin(), runs.end(), unit,
                         [](char16_t value, const SCaseRun& run) { return value < run.fFirst; });
    if (behind == runs.begin()) {
        return unit;
    }
    const SCaseRun& run = *std::prev(behind);
    if (unit > run.fLast || (unit - run.fFirst) % run.fStep != 0) {
        return unit;
    }
    return static_cast<char16_t>(unit + run.fDelta);
}

bool CCollationCursor::Next(SCollationElement& element) {
    if (fPendingTaken == fPendingCount) {
        if (fPosition == fText.size()) {
            return false;
        }
        fPendingCount = 0;
        fPendingTaken = 0;
        Expand(NextCodePoint());
    }
    element = fPending[fPendingTaken++];
    return true;
}

// A surrogate without its partner stands for itself.
uint32_t CCollationCursor::NextCodePoint() {
    if (!IsPairAt(fText, fPosition)) {
        return fText[fPosition++];
    }
    fPosition += 2;
    return JoinPair(fText[fPosition - 2], fText[fPosition - 1]);
}

void CCollationCursor::Expand(uint32_t codePoint) {
    codePoint = FoldWidth(codePoint);
    if (codePoint >= kFirstPairedCodePoint) {
        ExpandLower(codePoint, kLowerCase);
        return;
    }
    if (const auto* split = FindRow(Decompositions(), codePoint)) {
        // The few upper-case letters that decompose without being lowered first.
        const char16_t lowerBase = LowerUnit(static_cast<char16_t>(split->fBase));
        if (lowerBase != split->fBase) {
            ExpandLower(lowerBase, kUpperCase);
            Push({0, split->fMark, 0});
            return;
        }
    }
    uint32_t lower = LowerUnit(static_cast<char16_t>(codePoint));
    const uint32_t tertiary = lower == codePoint ? kLowerCase : kUpperCase;
    // Only the bare letter takes the breve: in U+045D another mark stands between.
    if (lower == kCyrillicI && fPosition < fText.size() && fText[fPosition] == kBreve) {
        ++fPosition;
        lower = kCyrillicShortI;
    }
    ExpandLower(lower, tertiary);
}

void CCollationCursor::ExpandLower(uint32_t codePoint, uint32_t tertiary) {
    if (const auto* split = FindRow(Decompositions(), codePoint)) {
        ExpandLower(split->fBase, tertiary);
        if (split->fMark != 0) {
            Push({0, split->fMark, 0});
        }
        return;
    }
    if (IsIn(kMarkRanges, codePoint)) {
        Push({0, codePoint, 0});
        return;
    }
    if (const auto* expansion = FindRow(std::span<const SExpansion>(kExpansions), codePoint)) {
        Push({PrimaryWeight(expansion->fFirst), kPlainSecondary, tertiary});
        if (expansion->fSecond != 0) {
            Push({PrimaryWeight(expansion->fSecond), kPlainSecondary, tertiary});
        }
        Push({0, expansion->fVariant, 0});
        return;
    }
    Push({PrimaryWeight(codePoint), kPlainSecondary, tertiary});
}

void CCollationCursor::Push(const SCollationElement& element) {
    fPending[fPendingCount++] = element;
}

} // namespace NSTextPackage
