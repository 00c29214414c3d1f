// Walks a text as the sequence of weights that decide its place in an order.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace NSTextPackage {

/// A weight of 0 does not take part in its level. A mark has no primary weight and no case.
struct SCollationElement {
    uint32_t fPrimary = 0;   // the base letter, digit or symbol
    uint32_t fSecondary = 0; // marks, and variants of a letter
    uint32_t fTertiary = 0;  // 1 lower case, 2 upper case
};

/// The lower case of a unit, or the unit itself when it has none in the basic plane.
char16_t LowerUnit(char16_t unit);

/// Splits letters into base and marks, expands ligatures, folds full-width forms into plain ones
/// and upper into lower case. Allocates nothing.
class CCollationCursor {
public:
    /// `text` is borrowed and must outlive the cursor.
    explicit CCollationCursor(std::u16string_view text) : fText(text) {}

    /// False at the end of the text.
    bool Next(SCollationElement& element);

private:
    uint32_t NextCodePoint();
    void Expand(uint32_t codePoint);
    void ExpandLower(uint32_t codePoint, uint32_t tertiary);
    void Push(const SCollationElement& element);

    std::u16string_view fText;
    size_t fPosition = 0;
    /// What the last character gave: one or two letters and their marks, four elements at most.
    std::array<SCollationElement, 8> fPending{};
    size_t fPendingCount = 0;
    size_t fPendingTaken = 0;
};

} // namespace NSTextPackage
