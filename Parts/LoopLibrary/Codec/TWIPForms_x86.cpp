#include "LoopLibrary/Codec/TWIPForms_x86.h"

#include <cpuid.h>

namespace NSLOPDLL {

namespace {

// Some compilers' tests of features do not know LZCNT.
bool HasLzcnt() noexcept {
    constexpr unsigned kExtendedFeatures = 0x80000001;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    return __get_cpuid(kExtendedFeatures, &a, &b, &c, &d) != 0 && (c & bit_LZCNT) != 0;
}

bool HasAvx2AndBitCounts() noexcept {
    return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi2") != 0 && HasLzcnt();
}

} // namespace

std::span<const STWIPForm> GetTWIPForms() noexcept {
    static constexpr STWIPForm kForms[] = {
        {"plain", nullptr, nullptr},
        {"sse2", DecodeTWIPSse2<int16_t>, DecodeTWIPSse2<int32_t>},
        {"avx2", DecodeTWIPAvx2<int16_t>, DecodeTWIPAvx2<int32_t>},
    };
    return {kForms, HasAvx2AndBitCounts() ? std::size_t{3} : std::size_t{2}};
}

} // namespace NSLOPDLL
