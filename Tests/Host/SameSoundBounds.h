#pragma once

#include <cstddef>
#include <cstdint>

/// How far the numbers of this system may be from those in Reference/, which Linux made.
struct SSameSoundBounds {
    size_t fDifferingSamples = 0; // of all samples compared
    float fLargestDifference = 0.0F;
    size_t fDifferingEntries = 0; // of a whole table
    int64_t fLargestSteps = 0;    // in the last place of a float
    uint64_t fHash = 0;           // of every sample, not only those compared; 0 where it varies
};

extern const SSameSoundBounds kSameSoundBounds;
