// Four floats in the compilers' vector types: the same operations on every processor that has such
// vectors, each rounded on its own.
#pragma once

#include <cstdint>
#include <cstring>

namespace NSLOPDLL {

using Lanes = float __attribute__((vector_size(16)));

constexpr int32_t kLaneCount = 4;

inline Lanes LoadLanes(const float* from) noexcept {
    Lanes lanes;
    std::memcpy(&lanes, from, sizeof lanes); // which needs no alignment
    return lanes;
}

inline Lanes Broadcast(float value) noexcept {
    return Lanes{value, value, value, value};
}

inline void StoreLanes(float* to, Lanes lanes) noexcept {
    std::memcpy(to, &lanes, sizeof lanes);
}

/// The lower halves one behind the other, and the upper ones.
inline Lanes LowerHalves(Lanes a, Lanes b) noexcept {
    return __builtin_shufflevector(a, b, 0, 1, 4, 5);
}

inline Lanes UpperHalves(Lanes a, Lanes b) noexcept {
    return __builtin_shufflevector(a, b, 2, 3, 6, 7);
}

/// Lane by lane in turn, those of the lower halves or of the upper ones.
inline Lanes InterleaveLower(Lanes a, Lanes b) noexcept {
    return __builtin_shufflevector(a, b, 0, 4, 1, 5);
}

inline Lanes InterleaveUpper(Lanes a, Lanes b) noexcept {
    return __builtin_shufflevector(a, b, 2, 6, 3, 7);
}

/// Four vectors as the rows of a square, whose columns become the rows.
inline void Transpose(Lanes& a, Lanes& b, Lanes& c, Lanes& d) noexcept {
    const Lanes lowerFront = InterleaveLower(a, b);
    const Lanes lowerBack = InterleaveLower(c, d);
    const Lanes upperFront = InterleaveUpper(a, b);
    const Lanes upperBack = InterleaveUpper(c, d);
    a = LowerHalves(lowerFront, lowerBack);
    b = UpperHalves(lowerFront, lowerBack);
    c = LowerHalves(upperFront, upperBack);
    d = UpperHalves(upperFront, upperBack);
}

} // namespace NSLOPDLL
