#include "LoopLibrary/Render/Tables/CDSPTables.h"

#include "LoopLibrary/Render/Common/FloatMath.h"

#include <array>
#include <bit>
#include <cmath>

namespace NSLOPDLL {

namespace {

constexpr size_t kCentre = 3 * kInterpolationPhases; // the kernel's peak

// The steps of window and sinc from one point of the kernel to the next, 2 pi / 1536 and pi / 256,
// have the precision of a float; they are added up in double.
constexpr double kWindowStep = 0.004090615548193455;
constexpr double kWindowStart = 3.1456833565607667; // pi and one step
constexpr double kSincStep = 0.012271846644580364;
static_assert(std::bit_cast<uint64_t>(kWindowStep) == 0x3f70c15240000000);
static_assert(std::bit_cast<uint64_t>(kSincStep) == 0x3f8921fb60000000);

constexpr double kCent = 0.0008333333333333334; // of an octave

double PowerOfWhole(double base, int32_t exponent) {
    double power = 1.0;
    for (int32_t bits = exponent; bits != 0; bits >>= 1) {
        if ((bits & 1) != 0) {
            power *= base;
        }
        base *= base;
    }
    return power;
}

// The tables of all rates. Lives in static storage and needs no destructor, so that the pointers
// into it stay good to the end of the process.
class CSharedTables {
public:
    static const CSharedTables& Get() noexcept {
        static const CSharedTables tables;
        return tables;
    }

    std::array<float, kInterpolationTaps * kInterpolationPhases> fInterpolation{};
    alignas(32) std::array<float, kInterpolationPhases * kPhaseStride> fInterpolationByPhase{};
    std::array<uint32_t, kPitchTableSize> fPitch{};

private:
    CSharedTables() noexcept {
        MakeWindowedSinc();
        NormalizePhases();
        OrderByPhase();
        MakePitchTable();
    }

    float& Tap(size_t row, size_t phase) {
        return fInterpolation[row * kInterpolationPhases + phase];
    }

    void MakeWindowedSinc() {
        Tap(0, kCentre) = 1.0F;
        double windowAngle = kWindowStart;
        double sincAngle = kSincStep;
        for (size_t k = 1; k < kCentre; ++k) {
            const double window = 0.54 - ::cos(windowAngle) * 0.46;
            const double sinc = ::sin(sincAngle) / sincAngle;
            const auto value = static_cast<float>(window * sinc);
            Tap(0, kCentre + k) = value;
            Tap(0, kCentre - k) = value;
            windowAngle += kWindowStep;
            sincAngle += kSincStep;
        }
    }

    // Makes the taps of each phase add up to 1, by the same amount on each.
    void NormalizePhases() {
        for (size_t phase = 0; phase < kInterpolationPhases; ++phase) {
            double sum = 0.0;
            for (size_t row = 0; row < kInterpolationTaps; ++row) {
                sum += static_cast<double>(Tap(row, phase));
            }
            const double correction = (1.0 - sum) / 6.0;
            for (size_t row = 0; row < kInterpolationTaps; ++row) {
                float& tap = Tap(row, phase);
                tap = static_cast<float>(static_cast<double>(tap) + correction);
            }
        }
    }

    void OrderByPhase() {
        for (size_t phase = 0; phase < kInterpolationPhases; ++phase) {
            for (size_t tap = 0; tap < kInterpolationTaps; ++tap) {
                fInterpolationByPhase[phase * kPhaseStride + tap] =
                    Tap(kInterpolationTaps - 1 - tap, phase);
            }
        }
    }

    void MakePitchTable() {
        const double cent = ::pow(2.0, kCent);
        const double unity = 16384.0 / PowerOfWhole(cent, kPitchTableUnity);
        for (int32_t i = 0; i < kPitchTableSize; ++i) {
            const double rounded = PowerOfWhole(cent, i) * unity + 0.5;
            fPitch[static_cast<size_t>(i)] = static_cast<uint32_t>(rounded);
        }
    }
};

std::unique_ptr<float[]> MakeTable() {
    return std::make_unique_for_overwrite<float[]>(kEnvelopeTableSize);
}

} // namespace

CDSPTables::CDSPTables(int32_t sampleRate)
    : fSampleRate(sampleRate), fAttackRates(MakeTable()), fTimes(MakeTable()),
      fDecayFactors(MakeTable()) {
    CSharedTables::Get();
    const float blockMs = 1000.0F / (static_cast<float>(sampleRate) * 0.015625F);
    for (size_t i = 0; i < kEnvelopeTableSize; ++i) {
        const float x = static_cast<float>(i) * 0.0009765625F;
        fTimes[i] = static_cast<float>(::pow(1.1, static_cast<double>(x) * 100.0) * 4.0 - 3.9);
        const float blocks = fTimes[i] / blockMs;
        fAttackRates[i] = static_cast<float>(1.0 / static_cast<double>(blocks));
        fDecayFactors[i] = FloatPow(0.25F, fAttackRates[i]);
    }
    fDecayFactors[kEnvelopeTableSize - 1] = 1.0F;
}

CDSPTables::~CDSPTables() = default;

const float* CDSPTables::GetInterpolationTable() noexcept {
    return CSharedTables::Get().fInterpolation.data();
}

const float* CDSPTables::GetInterpolationTableByPhase() noexcept {
    return CSharedTables::Get().fInterpolationByPhase.data();
}

const uint32_t* CDSPTables::GetPitchTable() noexcept {
    return CSharedTables::Get().fPitch.data();
}

} // namespace NSLOPDLL
