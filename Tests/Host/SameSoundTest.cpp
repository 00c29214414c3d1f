#include "LoopLibrary/Render/Tables/CDSPTables.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Listenings.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string>

// All systems sound alike: what is heard here against Reference/, files of 32-bit little-endian
// words that these very tests write when LOOPLIBRARY_WRITE_REFERENCE is set. They tell nothing of
// right and wrong, which the render tests do by plain models; they show that a change of system,
// processor or compiler changes no sample.

namespace {

class CReference {
public:
    explicit CReference(const std::string& name)
        : fPath(LOOP_REFERENCE_DIR "/" + name), fWriting(std::getenv(kSwitch) != nullptr) {
        if (fWriting) {
            return;
        }
        std::ifstream file(fPath, std::ios::binary);
        std::array<char, sizeof(uint32_t)> bytes{};
        while (file.read(bytes.data(), bytes.size())) {
            fWords.push_back(
                NSPorter::DecodeLittleEndian(reinterpret_cast<const uint8_t*>(bytes.data())));
        }
    }
    ~CReference() {
        if (fWriting) {
            std::ofstream file(fPath, std::ios::binary);
            for (const uint32_t word : fWords) {
                std::array<uint8_t, sizeof word> bytes{};
                NSPorter::EncodeLittleEndian(word, bytes.data());
                file.write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
            }
        }
    }
    CReference(const CReference&) = delete;
    CReference& operator=(const CReference&) = delete;

    // The next words of the file; while it is written, those given.
    template <class Word>
    std::vector<Word> Next(std::span<const Word> found) {
        static_assert(sizeof(Word) == sizeof(uint32_t));
        if (fWriting) {
            for (const Word word : found) {
                fWords.push_back(std::bit_cast<uint32_t>(word));
            }
        }
        std::vector<Word> next;
        while (next.size() < found.size() && fPosition < fWords.size()) {
            next.push_back(std::bit_cast<Word>(fWords[fPosition++]));
        }
        return next;
    }
    bool IsAtEnd() const { return fPosition == fWords.size(); }

private:
    static constexpr const char* kSwitch = "LOOPLIBRARY_WRITE_REFERENCE";

    const std::string fPath;
    const bool fWriting;
    std::vector<uint32_t> fWords;
    size_t fPosition = 0;
};

// Every word is that of the reference. Says by how much the values are off where they are not.
void ExpectSame(const char* name, std::span<const float> found, CReference& reference) {
    const std::vector<float> expected = reference.Next<float>(found);
    ASSERT_EQ(found.size(), expected.size()) << name;
    size_t differing = 0;
    float largest = 0.0F;
    for (size_t i = 0; i < found.size(); ++i) {
        differing += std::bit_cast<uint32_t>(found[i]) != std::bit_cast<uint32_t>(expected[i]);
        largest = std::max(largest, std::abs(found[i] - expected[i]));
    }
    EXPECT_EQ(differing, 0U) << name << ", by " << largest << " at most";
}

// Every 311th sample of the preview and of all slices. All samples go into the hash (FNV-1a).
std::vector<float> Listen(const SListening& listening, uint64_t& hash) {
    const CHostLoop loop(listening.fFile);
    EXPECT_EQ(LOPSetOutputSampleRate(loop.Get(), listening.fOutputRate), kLOPResult_OK);
    EXPECT_EQ(LOPSetPreviewTempo(loop.Get(), 104729), kLOPResult_OK);
    EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    Planes heard = loop.RenderPreview(60000, 1009);
    for (int32_t slice = 0; slice < loop.GetInfo().fSliceCount; ++slice) {
        for (std::vector<float>& plane : loop.RenderSlice(slice)) {
            heard.push_back(std::move(plane));
        }
    }
    std::vector<float> kept;
    for (const std::vector<float>& plane : heard) {
        for (const float sample : plane) {
            hash = (hash ^ std::bit_cast<uint32_t>(sample)) * 0x100000001B3U;
        }
        for (size_t i = 100; i < plane.size(); i += 311) {
            kept.push_back(plane[i]);
        }
    }
    return kept;
}

// This library's own output. That both systems, all compilers and all processors reach the same one
// is what it shows.
constexpr uint64_t kSoundHash = 3767155872923585981U;

TEST_F(CHostTest, LoopsSoundAlikeEverywhere) {
    CReference reference("Sound.f32");
    uint64_t hash = 0xCBF29CE484222325U;
    for (const SListening& listening : Listenings()) {
        ExpectSame(listening.fName, Listen(listening, hash), reference);
    }
    EXPECT_TRUE(reference.IsAtEnd());
    EXPECT_EQ(hash, kSoundHash);
}

TEST(SameTables, TablesAreAlikeEverywhere) {
    using NSLOPDLL::CDSPTables;
    CReference reference("Tables.f32");
    const CDSPTables tables(44100);
    const auto compare = [&reference](const char* name, const float* table, size_t size) {
        ExpectSame(name, {table, size}, reference);
    };
    compare("times", tables.GetTimes(), NSLOPDLL::kEnvelopeTableSize);
    compare("attack", tables.GetAttackRates(), NSLOPDLL::kEnvelopeTableSize);
    compare("decay", tables.GetDecayFactors(), NSLOPDLL::kEnvelopeTableSize);
    compare("kernel", CDSPTables::GetInterpolationTable(),
            NSLOPDLL::kInterpolationTaps * NSLOPDLL::kInterpolationPhases);
    uint32_t sum = 0x811C9DC5; // over the pitches
    for (int32_t i = 0; i < NSLOPDLL::kPitchTableSize; ++i) {
        sum = (sum ^ CDSPTables::GetPitchTable()[i]) * 0x01000193;
    }
    EXPECT_EQ(reference.Next<uint32_t>({&sum, 1}), std::vector<uint32_t>{sum});
    EXPECT_TRUE(reference.IsAtEnd());
}

} // namespace
