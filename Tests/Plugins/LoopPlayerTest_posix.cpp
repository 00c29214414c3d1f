#include "Bindings/Cpp/LoopLibrary.hpp"
#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Measured/SystemCallFilter.h"
#include "Tests/Plugins/CPluginHost.h"

#include <fstream>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

// The plug-in in a host that reckons by hand what should be heard.

namespace {

constexpr int32_t kRate = 48000; // not that of the files
constexpr int64_t kFade = 64;    // frames after a jump whose sound is a matter of taste

// Places the slices of a loop one by one, at the frames nearest to their pulses.
class CHand {
public:
    explicit CHand(const Bytes& bytes) {
        LoopLibrary::Loop loop = LoopLibrary::Loop::Open(bytes);
        loop.SetOutputSampleRate(kRate);
        fPulses = loop.GetInfo().fPPQLength;
        for (int32_t slice = 0; slice < loop.GetInfo().fSliceCount; ++slice) {
            fStarts.push_back(loop.GetSliceInfo(slice).fPPQPosition);
            fSlices.push_back(loop.RenderSlice(slice));
        }
    }

    // From now on.
    void Move(double quarter, double bpm) {
        fSounding.clear();
        SetTempo(quarter, bpm);
        const auto pulses = static_cast<double>(fPulses);
        fNext = (static_cast<int64_t>(std::floor(quarter * LOP_PPQ / pulses)) - 1) * Count();
        while (FrameOf(fNext) < fNow) {
            ++fNext;
        }
        if (FrameOf(fNext) > fNow) {
            fSounding.push_back({IndexOf(fNext - 1), fNow - FrameOf(fNext - 1)});
        }
    }
    void SetTempo(double quarter, double bpm) {
        fStart = fNow;
        fQuarter = static_cast<long double>(quarter);
        fBpm = static_cast<long double>(bpm);
    }
    void Stop() { fSounding.clear(), fBpm = 0.0L; }
    double GetQuarter() const {
        return static_cast<double>(fQuarter + static_cast<long double>(fNow - fStart) * fBpm /
                                                  (60.0L * kRate));
    }
    int64_t GetFrame() const { return fNow; }

    void Render(float* left, float* right, int64_t frames) {
        std::fill_n(left, frames, 0.0F);
        std::fill_n(right, frames, 0.0F);
        while (fBpm > 0.0L && FrameOf(fNext) < fNow + frames) {
            fSounding.push_back({IndexOf(fNext), fNow - FrameOf(fNext)});
            ++fNext;
        }
        for (SSounding& sounding : fSounding) {
            Mix(fSlices[sounding.fSlice], sounding.fFrom, 1.0F, left, right, frames);
            sounding.fFrom += frames;
        }
        fSounding.erase(std::remove_if(fSounding.begin(), fSounding.end(),
                                       [&](const SSounding& sounding) {
                                           return sounding.fFrom >= Size(fSlices[sounding.fSlice]);
                                       }),
                        fSounding.end());
        fNow += frames;
    }
    // `from` below 0: it begins so many frames into the block.
    static void Mix(const LoopLibrary::Audio& slice, int64_t from, float level, float* left,
                    float* right, int64_t frames) {
        const float* const one = slice.fLeft.data();
        const float* const two = slice.fRight.empty() ? one : slice.fRight.data();
        const int64_t end = std::min(frames, Size(slice) - from);
        for (int64_t frame = std::max<int64_t>(-from, 0); frame < end; ++frame) {
            left[frame] += level * one[from + frame];
            right[frame] += level * two[from + frame];
        }
    }
    const LoopLibrary::Audio& GetSlice(std::size_t slice) const { return fSlices[slice]; }

private:
    struct SSounding {
        std::size_t fSlice;
        int64_t fFrom;
    };
    static int64_t Size(const LoopLibrary::Audio& slice) {
        return static_cast<int64_t>(slice.fLeft.size());
    }
    int64_t Count() const { return static_cast<int64_t>(fSlices.size()); }
    std::size_t IndexOf(int64_t n) const {
        return static_cast<std::size_t>(((n % Count()) + Count()) % Count());
    }
    int64_t FrameOf(int64_t n) const {
        const auto index = static_cast<int64_t>(IndexOf(n));
        const int64_t pulses =
            (n - index) / Count() * fPulses + fStarts[static_cast<std::size_t>(index)];
        const long double quarters = static_cast<long double>(pulses) / LOP_PPQ - fQuarter;
        return fStart + static_cast<int64_t>(std::floor(quarters * 60.0L * kRate / fBpm + 0.5L));
    }

    int64_t fPulses = 0;
    std::vector<int64_t> fStarts;
    std::vector<LoopLibrary::Audio> fSlices;
    std::vector<SSounding> fSounding;
    int64_t fNow = 0, fStart = 0, fNext = 0;
    long double fQuarter = 0.0L, fBpm = 0.0L;
};

class LoopPlayerTest : public CHostTest {
protected:
    static void SetUpTestSuite() { setenv("LV2_PATH", LOOP_LV2_PATH, 1); }
    void SetUp() override {
        CHostTest::SetUp();
        std::filesystem::create_directories(fFolder);
        fFile = Write("drums.lop2", DrumLOP2());
    }
    void TearDown() override {
        std::filesystem::remove_all(fFolder);
        CHostTest::TearDown();
    }
    std::string Write(const std::string& name, const Bytes& bytes) const {
        std::ofstream(fFolder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return fFolder / name;
    }
    static bool IsHeard(CPluginHost& host) {
        host.SendPosition(0, {0.0, 120.0, 1.0});
        host.Run(4000);
        return !IsSilent({host.fLeft.begin(), host.fLeft.begin() + 4000});
    }

    const std::filesystem::path fFolder =
        std::filesystem::path(testing::TempDir()) / ("loop-player-" + std::to_string(getpid()));
    std::string fFile;
};

// Frame by frame from `from` on; names the first difference.
void ExpectBlock(const CPluginHost& host, const std::vector<float>& left,
                 const std::vector<float>& right, int64_t from, int64_t frames, int64_t now) {
    for (int64_t frame = from; frame < frames; ++frame) {
        const auto at = static_cast<std::size_t>(frame);
        // Three slices at once may be summed in another order.
        ASSERT_NEAR(host.fLeft[at], left[at], 1e-6F) << "frame " << now + frame;
        ASSERT_NEAR(host.fRight[at], right[at], 1e-6F) << "frame " << now + frame;
    }
}

TEST_F(LoopPlayerTest, PlaysAnHourLikeSlicesPlacedByHand) {
    constexpr double kBpm = 97.531;
    // Ten minutes under the sanitizer, which takes ten times as long.
    constexpr int64_t kSeconds = kSanitizerHasItsOwn ? 600 : 3600;
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    CHand hand(DrumLOP2());
    hand.Move(0.0, kBpm);
    std::vector<float> left(CPluginHost::kMostFrames), right(CPluginHost::kMostFrames);
    bool isFirst = true;
    int64_t blocks = 0, heard = 0;
    while (hand.GetFrame() < kSeconds * kRate) {
        const int64_t now = hand.GetFrame();
        // Some hosts tell the position in each block, some cut to ticks, some once.
        const int64_t minute = now / (int64_t{60} * kRate) % 3;
        if (isFirst || minute > 0) {
            const double ticks = minute == 2 ? 960.0 : 1e9;
            host.SendPosition(0, {std::floor(hand.GetQuarter() * ticks) / ticks, kBpm, 1.0});
        }
        isFirst = false;
        const int64_t frames = 1 + now * 7919 % 8191;
        host.Run(static_cast<uint32_t>(frames));
        hand.Render(left.data(), right.data(), frames);
        const auto bytes = static_cast<std::size_t>(frames) * sizeof(float);
        if (std::memcmp(host.fLeft.data(), left.data(), bytes) != 0 ||
            std::memcmp(host.fRight.data(), right.data(), bytes) != 0) {
            ExpectBlock(host, left, right, 0, frames, now);
            ASSERT_FALSE(HasFatalFailure());
        }
        ++blocks;
        heard +=
            std::any_of(left.begin(), left.begin() + frames, [](float x) { return x != 0.0F; });
    }
    EXPECT_GT(heard, blocks / 2);
    EXPECT_GT(blocks, kSeconds * 8);
    EXPECT_EQ(host.fHeapCalls, 0);
}

TEST_F(LoopPlayerTest, FollowsJumpsHostLoopsAndTempoInTheMiddleOfBlocks) {
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    CHand hand(DrumLOP2());
    std::vector<float> left(CPluginHost::kMostFrames), right(CPluginHost::kMostFrames);
    enum EChange { kJump, kTempo, kStop };
    struct SRow {
        int64_t fFrames; // that pass before it
        EChange fChange;
        double fQuarter, fBpm, fSpeed;
    };
    std::vector<SRow> rows = {{0, kJump, 0.0, 120.0, 1.0},      {30000, kTempo, 0, 90.0, 1.0},
                              {12345, kJump, 7.3, 90.0, 1.0},   {40001, kTempo, 0, 174.5, 1.0},
                              {5000, kStop, 0, 120.0, 0.0},     {9999, kJump, -2.5, 60.0, 1.0},
                              {100000, kTempo, 0, 60.0, 1.5},   {50000, kStop, 0, 60.0, -1.0},
                              {3000, kJump, 1001.0, 133.0, 1.0}};
    for (int turn = 0; turn < 20; ++turn) { // the host goes round between 4 and 6
        rows.push_back({turn == 0 ? 7777 : 44100, kJump, 4.0, 120.0, 1.0});
    }
    std::size_t row = 0;
    int64_t wait = 0;  // frames before the row's change
    int64_t faded = 0; // frames that are over when the fade is
    while (row < rows.size()) {
        const int64_t now = hand.GetFrame();
        const int64_t frames = 1 + now * 7919 % 2999;
        int64_t done = 0;
        std::vector<std::pair<int64_t, int64_t>> skipped = {{0, faded - now}};
        while (row < rows.size() && wait <= frames - done - 1) {
            const SRow& change = rows[row];
            hand.Render(left.data() + done, right.data() + done, wait);
            done += wait;
            const double quarter = change.fChange == kJump ? change.fQuarter : hand.GetQuarter();
            host.SendPosition(static_cast<uint32_t>(done), {quarter, change.fBpm, change.fSpeed});
            if (change.fChange == kTempo) {
                hand.SetTempo(quarter, change.fBpm * change.fSpeed);
            } else {
                faded = now + done + kFade;
                skipped.emplace_back(done, done + kFade);
                change.fChange == kStop ? hand.Stop() : hand.Move(quarter, change.fBpm);
            }
            wait = ++row < rows.size() ? rows[row].fFrames : 0;
        }
        hand.Render(left.data() + done, right.data() + done, frames - done);
        wait -= frames - done;
        host.Run(static_cast<uint32_t>(frames));
        int64_t from = 0;
        for (const auto& [begin, end] : skipped) {
            ExpectBlock(host, left, right, from, std::min(begin, frames), now);
            from = std::max(from, end);
        }
        ExpectBlock(host, left, right, from, frames, now);
        ASSERT_FALSE(HasFatalFailure()) << "before row " << row;
    }
    EXPECT_EQ(host.fHeapCalls, 0);
}

TEST_F(LoopPlayerTest, PlaysSlicesOfEveryKindByKeysAndVelocity) {
    for (const Bytes& bytes : {DrumLOP2(24), DrumTSL(), DrumLOP()}) {
        CPluginHost host(kRate);
        host.Activate();
        host.LoadFile(Write("keys", bytes));
        CHand hand(bytes);
        std::vector<float> left(4000), right(4000);
        // The transport starts among the keys and cuts none off.
        hand.Render(left.data(), right.data(), 1000);
        hand.Move(0.0, 120.0);
        hand.Render(left.data() + 1000, right.data() + 1000, 3000);
        host.SendMidi(17, {0x95, 38, 64});
        host.SendMidi(18, {0x85, 38, 64});
        host.SendMidi(300, {0x90, 36, 127});
        host.SendMidi(301, {0x90, 35, 127});  // below the first slice
        host.SendMidi(302, {0x90, 127, 127}); // behind the last
        host.SendPosition(1000, {0.0, 120.0, 1.0});
        host.SendMidi(1500, {0x90, 37, 127});
        CHand::Mix(hand.GetSlice(1), -1500, 1.0F, left.data(), right.data(), 4000);
        CHand::Mix(hand.GetSlice(2), -17, 64.0F / 127.0F, left.data(), right.data(), 4000);
        CHand::Mix(hand.GetSlice(0), -300, 1.0F, left.data(), right.data(), 4000);
        host.Run(4000);
        ExpectBlock(host, left, right, 0, 4000, 0);
        host.SendPosition(0, {0.0, 120.0, 0.0});
        host.SendMidi(0, {0xB0, 120, 0});
        host.Run(kFade + 1000);
        EXPECT_TRUE(IsSilent({host.fLeft.begin() + kFade, host.fLeft.begin() + kFade + 1000}));
        EXPECT_EQ(host.fHeapCalls, 0);
    }
}

TEST_F(LoopPlayerTest, ObeysItsControls) {
    constexpr int64_t kFrames = 8000;
    std::vector<float> left(kFrames), right(kFrames);
    const float notANumber = std::nanf("");
    // The controls, the host's tempo, and the tempo and level that are heard.
    const struct {
        std::array<float, 5> fControls;
        double fHostBpm, fHeardBpm;
        float fLevel;
    } rows[] = {
        {{20.0F, 1.0F, 0.0F, 1.0F, 120.0F}, 100.0, 100.0, 10.0F},
        {{0.0F, 0.0F, 0.0F, 1.0F, 120.0F}, 400.0, 200.0, 1.0F},
        {{0.0F, 2.0F, 0.0F, 1.0F, 120.0F}, 100.0, 200.0, 1.0F},
        {{0.0F, 1.0F, 0.0F, 0.0F, 210.0F}, 0.0, 210.0, 1.0F},
        {{0.0F, 1.0F, notANumber, 0.0F, notANumber}, 0.0, 20.0, 1.0F},
    };
    for (const auto& row : rows) {
        CPluginHost host(kRate);
        host.Activate();
        host.LoadFile(fFile);
        host.fControls = row.fControls;
        if (row.fHostBpm > 0.0) {
            host.SendPosition(0, {0.0, row.fHostBpm, 1.0});
        } else {
            host.Activate(); // its own tempo begins anew
        }
        host.Run(1); // the gain glides over the first block
        host.Run(kFrames - 1);
        CHand hand(DrumLOP2());
        hand.Move(0.0, row.fHeardBpm);
        hand.Render(left.data(), right.data(), 1);
        hand.Render(left.data(), right.data(), kFrames - 1);
        for (std::size_t frame = 0; frame < kFrames - 1; ++frame) {
            ASSERT_NEAR(host.fLeft[frame], row.fLevel * left[frame], 1e-5F)
                << row.fHeardBpm << ": " << frame;
        }
    }
    // The loop begins with another slice, and goes round.
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    host.fControls[2] = 3.0F;
    host.SendPosition(0, {0.0, 120.0, 1.0});
    host.Run(2000);
    const CHand hand(DrumLOP2());
    std::fill(left.begin(), left.end(), 0.0F);
    CHand::Mix(hand.GetSlice(3), 0, 1.0F, left.data(), right.data(), 2000);
    for (std::size_t frame = 0; frame < 2000; ++frame) {
        ASSERT_EQ(host.fLeft[frame], left[frame]);
    }
}

TEST_F(LoopPlayerTest, FollowsAHostThatTellsFramesAloneAtItsOwnTempo) {
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    CHand hand(DrumLOP2());
    std::vector<float> left(6000), right(6000);
    host.fControls[4] = 150.0F;
    host.SendFrame(0, int64_t{3} * kRate);
    host.Run(6000);
    hand.Move(3.0 * 150.0 / 60.0, 150.0);
    hand.Render(left.data(), right.data(), 6000);
    ExpectBlock(host, left, right, kFade, 6000, 0);
    host.fControls[4] = 90.0F;
    hand.SetTempo(hand.GetQuarter(), 90.0);
    for (int block = 0; block < 10; ++block) {
        host.Run(6000);
        hand.Render(left.data(), right.data(), 6000);
        ExpectBlock(host, left, right, 0, 6000, hand.GetFrame());
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST_F(LoopPlayerTest, LeavesOtherInstancesAlone) {
    const std::string other = Write("other", DrumTSL());
    const auto play = [&](std::vector<CPluginHost*> hosts) {
        std::vector<std::vector<float>> heard(2);
        for (int64_t block = 0; block < 300; ++block) {
            std::vector<std::thread> workers;
            for (std::size_t i = 0; i < 2; ++i) {
                if (CPluginHost* const host = hosts[i]) {
                    if (block % 50 == 0) {
                        host->SendFile(0, i == 0 ? fFile : other);
                    }
                    host->SendPosition(
                        0, {static_cast<double>(block % 40) * 0.1, i == 0 ? 130.0 : 77.0, 1.0});
                    host->Run(777);
                    heard[i].insert(heard[i].end(), host->fLeft.begin(), host->fLeft.begin() + 777);
                    workers.emplace_back([host] { host->Work(); });
                }
            }
            for (std::thread& worker : workers) {
                worker.join();
            }
        }
        return heard;
    };
    std::array<std::unique_ptr<CPluginHost>, 4> hosts;
    for (auto& host : hosts) {
        host = std::make_unique<CPluginHost>(kRate);
        host->Activate();
    }
    const auto together = play({hosts[0].get(), hosts[1].get()});
    EXPECT_EQ(together[0], play({hosts[2].get(), nullptr})[0]);
    EXPECT_EQ(together[1], play({nullptr, hosts[3].get()})[1]);
    EXPECT_FALSE(IsSilent(together[0]));
    EXPECT_FALSE(IsSilent(together[1]));
}

TEST_F(LoopPlayerTest, IsSilentWithoutAFileThatItCanPlay) {
    CPluginHost host(kRate);
    host.Activate();
    EXPECT_FALSE(IsHeard(host));
    Bytes broken = DrumLOP2();
    broken.resize(broken.size() / 2);
    const std::string pipe = fFolder / "pipe"; // to open it would wait for a writer
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string huge = Write("huge", DrumLOP2());
    std::filesystem::resize_file(huge, uintmax_t{1} << 40); // takes no place on the disk
    for (const std::string& path :
         {std::string(), (fFolder / "gone").string(), fFolder.string(), pipe, Write("none", {}),
          Write("text", Bytes(1000, 'x')), Write("broken", broken), huge, std::string(5000, 'x')}) {
        host.LoadFile(fFile);
        EXPECT_TRUE(IsHeard(host));
        EXPECT_EQ(host.GetTold(), fFile);
        host.fLog.clear();
        host.LoadFile(path);
        const bool isTooLong = path.size() > 4095;
        EXPECT_EQ(IsHeard(host), isTooLong) << path;
        EXPECT_EQ(host.GetTold(), isTooLong ? fFile : path);
        EXPECT_EQ(host.fLog.find(path) != std::string::npos, !isTooLong) << host.fLog;
    }
    // The library renders from 11025 frames per second on.
    for (const auto& [rate, isHeard] : {std::pair(8000.0, false),
                                        {11025.0, true},
                                        {192000.0, true},
                                        {0.0, false},
                                        {1e300, false}}) {
        CPluginHost rated(rate);
        rated.Activate();
        rated.LoadFile(fFile);
        EXPECT_EQ(IsHeard(rated), isHeard) << rate;
        EXPECT_EQ(rated.fLog.empty(), isHeard) << rate;
    }
    // Between a stop of the plug-in and the host's next word the transport stands.
    host.LoadFile(fFile);
    EXPECT_TRUE(IsHeard(host));
    host.Deactivate();
    host.Activate();
    host.Run(4000);
    EXPECT_TRUE(IsSilent({host.fLeft.begin(), host.fLeft.begin() + 4000}));
    EXPECT_EQ(host.fHeapCalls, 0);
}

TEST_F(LoopPlayerTest, TakesNothingFromBrokenEvents) {
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    const std::string other = Write("other", DrumTSL());
    // Words of a request for a file: a size or type in the sequence, its event, the object's
    // property and value, and what is written there.
    const std::pair<uint32_t, uint32_t> words[] = {
        {0, 0},   {0, 8},  {0, 60},    {24, 0xFFFFFFF8}, {24, 5000},       {24, 4},         {24, 0},
        {24, 44}, {28, 0}, {36, 0},    {40, 0},          {48, 0xFFFFFFF8}, {48, 2},         {52, 0},
        {56, 0},  {64, 0}, {72, 5000}, {76, 0},          {48, 5000},       {72, 0xFFFFFFFF}};
    for (const auto& [offset, word] : words) {
        host.SendFile(0, other);
        host.Break(offset, word);
        host.Run(64);
        host.Work();
        host.Run(64);
        EXPECT_EQ(host.GetTold(), fFile) << offset << ": " << word;
    }
    host.SendMidi(0, {0x90, 36, 127});
    host.Break(0, 8 + 16 + 2); // ends in the message
    const std::array<uint8_t, 3> messages[] = {
        {0x90, 200, 100}, {0x90, 36, 200}, {36, 36, 100}, {0xF0, 36, 0xF7}, {0xFF, 36, 100}};
    for (const auto& message : messages) {
        host.Run(500);
        EXPECT_TRUE(IsSilent({host.fLeft.begin(), host.fLeft.begin() + 500}));
        host.SendMidi(0, message);
    }
    // Late events happen at once, those behind the block at its end.
    host.SendMidi(400, {0xB0, 120, 0});
    host.SendMidi(3, {0x90, 36, 127});
    host.SendMidi(0xFFFFFFFF, {0x90, 37, 127});
    host.Run(500);
    const CHand hand(DrumLOP2());
    std::vector<float> left(500), right(500);
    CHand::Mix(hand.GetSlice(0), -400, 1.0F, left.data(), right.data(), 500);
    ExpectBlock(host, left, right, 0, 500, 0);
    const double odd[] = {0.0, -1.0, 1e300, 1e-300, HUGE_VAL, -HUGE_VAL, std::nan("")};
    for (const double bpm : odd) {
        for (const double speed : odd) {
            host.SendPosition(0, {1e15, bpm, speed});
            host.fControls.fill(static_cast<float>(speed));
            host.Run(0);
            host.Run(8192);
            EXPECT_TRUE(std::all_of(host.fRight.begin(), host.fRight.end(),
                                    [](float sample) { return std::isfinite(sample); }));
        }
    }
    host.fControls = {0.0F, 1.0F, 0.0F, 1.0F, 120.0F};
    EXPECT_TRUE(IsHeard(host));
    EXPECT_EQ(host.fHeapCalls, 0);
}

TEST_F(LoopPlayerTest, SavesThePathAskedForAndFindsItInAMovedSession) {
    const std::filesystem::path session = fFolder / "session";
    std::filesystem::create_directory(session);
    const std::string file = Write("session/drums.lop2", DrumLOP2());
    CPluginHost saver(kRate);
    saver.Activate();
    saver.LoadFile(fFile);
    saver.SendFile(0, file);
    saver.Run(64); // the worker has not begun
    // lilv maps once more by itself what it is given, so another kind of host looks here.
    EXPECT_EQ(saver.SaveMapped(), "session:" + file);
    CPluginHost mapped(kRate);
    mapped.RestoreMapped("session:" + file);
    mapped.Activate();
    EXPECT_TRUE(IsHeard(mapped));
    saver.Save(session);
    std::filesystem::rename(session, fFolder / "moved");
    const std::string moved = fFolder / "moved" / "drums.lop2";

    // Before activation at once; afterwards through the worker; and by a host that has none.
    for (const auto& [isActive, hasWorker] :
         {std::pair(false, true), {true, true}, {false, false}}) {
        CPluginHost host(kRate, hasWorker);
        if (isActive) {
            host.Activate();
            host.Restore(fFolder / "moved", true);
            EXPECT_FALSE(IsHeard(host));
            host.Work();
        } else {
            host.Restore(fFolder / "moved", hasWorker);
            EXPECT_EQ(host.fTimesTold, 0);
            host.Activate();
        }
        EXPECT_TRUE(IsHeard(host)) << isActive << hasWorker;
        EXPECT_EQ(host.GetTold(), moved);
        EXPECT_EQ(host.fTimesTold, 1);
    }

    // Memory that runs out is a state that cannot be saved or restored, and no exception to the
    // host.
    const std::string stored = "session:" + moved;
    FailAllocation(0);
    EXPECT_NO_THROW(saver.SaveMapped());
    FailAllocation(1); // the first is the host's own
    EXPECT_NO_THROW(saver.RestoreMapped(stored));
    FailAllocation(-1);

    // A file that is gone is silence, and the session keeps its path.
    std::filesystem::rename(moved, fFolder / "away");
    CPluginHost host(kRate);
    host.LoadFile(fFile);
    host.Restore(fFolder / "moved");
    host.Activate();
    EXPECT_FALSE(IsHeard(host));
    EXPECT_EQ(host.GetTold(), moved);
    std::filesystem::create_directory(fFolder / "again");
    host.Save(fFolder / "again");
    std::filesystem::rename(fFolder / "away", moved);
    CPluginHost later(kRate);
    later.Restore(fFolder / "again");
    later.Activate();
    EXPECT_TRUE(IsHeard(later));

    // No file is a state too.
    CPluginHost empty(kRate);
    empty.Save(fFolder / "again");
    later.Restore(fFolder / "again");
    EXPECT_FALSE(IsHeard(later));
    EXPECT_EQ(later.GetTold(), "");
}

TEST_F(LoopPlayerTest, FadesFromALoopThatIsReplacedToTheNext) {
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    host.SendPosition(0, {0.1, 120.0, 1.0});
    host.SendMidi(0, {0x90, 37, 127}); // a key fades like the rest
    CHand before(DrumLOP2()), after(DrumTSL());
    before.Move(0.1, 120.0);
    after.Move(0.1, 120.0);
    std::vector<float> left(2000), right(2000), nextLeft(2000), nextRight(2000);
    before.Render(left.data(), right.data(), 2000);
    after.Render(nextLeft.data(), nextRight.data(), 2000);
    host.Run(2000);
    host.SendFile(0, Write("other", DrumTSL()));
    before.Render(left.data(), right.data(), 1);
    after.Render(nextLeft.data(), nextRight.data(), 1);
    host.Run(1);
    host.Work();
    after.Move(after.GetQuarter(), 120.0); // what began before is entered in its middle
    for (int64_t block : {10, 20, 1000}) {
        const int64_t now = before.GetFrame() - 2001;
        before.Render(left.data(), right.data(), block);
        after.Render(nextLeft.data(), nextRight.data(), block);
        CHand::Mix(before.GetSlice(1), 2001 + now, 1.0F, left.data(), right.data(), block);
        for (int64_t frame = 0; frame < block; ++frame) {
            const float rise =
                std::min(static_cast<float>(now + frame) / static_cast<float>(kFade), 1.0F);
            for (const auto& [old, next] :
                 {std::pair(&left, &nextLeft), std::pair(&right, &nextRight)}) {
                float& sample = (*next)[static_cast<std::size_t>(frame)];
                sample = rise * sample + (1.0F - rise) * (*old)[static_cast<std::size_t>(frame)];
            }
        }
        host.Run(static_cast<uint32_t>(block));
        ExpectBlock(host, nextLeft, nextRight, 0, block, now);
    }
    EXPECT_EQ(host.fHeapCalls, 0);
}

TEST_F(LoopPlayerTest, KeepsOrderWhateverTheWorkerDoesWhen) {
    const std::string other = Write("other", DrumTSL());
    CPluginHost host(kRate);
    host.Activate();
    // A worker that is full is asked again.
    host.fRefusesWork = true;
    host.LoadFile(fFile);
    EXPECT_FALSE(IsHeard(host));
    host.fRefusesWork = false;
    host.Run(64);
    host.Work();
    EXPECT_TRUE(IsHeard(host));
    // The answer to an old request comes behind a new one, and a restore in between.
    host.SendFile(0, fFolder / "gone");
    host.SendFile(0, other);
    host.Run(64);
    host.Work();
    host.SendFile(0, "");
    host.Run(64);
    EXPECT_TRUE(IsHeard(host)) << "until the worker has answered";
    host.Work();
    host.Run(kFade);
    EXPECT_FALSE(IsHeard(host));
    host.SendFile(0, other);
    host.Run(64);
    CPluginHost empty(kRate);
    empty.Save(fFolder);
    host.Restore(fFolder);
    host.Work();
    EXPECT_FALSE(IsHeard(host));
    EXPECT_EQ(host.fHeapCalls, 0);
    // A loop that is replaced, or that comes too late, is freed by the worker; requests, answers
    // and loops that nobody takes any more end with the instance.
    const auto countHeld = [] {
        const SAllocationCounts counts = GetAllocationCounts();
        return counts.fTaken - counts.fGiven;
    };
    const int64_t before = countHeld();
    {
        CPluginHost brief(kRate);
        brief.Activate();
        brief.LoadFile(fFile);
        brief.Save(fFolder); // the last URIs are known
        const int64_t one = countHeld();
        brief.SendFile(0, other);
        brief.SendFile(0, fFile);
        for (int turn = 0; turn < 2; ++turn) {
            brief.Run(64);
            brief.Work();
        }
        EXPECT_EQ(countHeld(), one);
        brief.Deactivate();
        brief.Restore(fFolder);
        EXPECT_EQ(countHeld(), one) << "a restore frees what it replaces";
        brief.Activate();
        brief.SendFile(0, other);
        brief.Run(64);
        brief.Work();
    }
    EXPECT_EQ(countHeld(), before);
}

TEST_F(LoopPlayerTest, MakesNoSystemCallInTheAudioCall) {
    if (kSanitizerHasItsOwn) {
        GTEST_SKIP() << "the sanitizer makes such calls itself";
    }
    CPluginHost host(kRate);
    host.Activate();
    host.LoadFile(fFile);
    host.SendFile(0, fFile);
    host.Run(64);
    host.Work(); // its answer comes below
    const EAlone result = RunWithoutSystemCalls([&] {
        host.fHeapCalls = 0;
        for (uint32_t block = 0; block < 300; ++block) {
            host.SendPosition(7, {block * 0.37, 60.0 + block, block % 7 == 0 ? 0.0 : 1.0});
            host.SendMidi(20, {0x90, static_cast<uint8_t>(block % 128), 100});
            if (block % 50 == 10) {
                host.SendFile(30, fFile);
            }
            const auto value = static_cast<float>(block);
            host.fControls = {value * 0.1F, static_cast<float>(block % 3), value,
                              static_cast<float>(block % 2), 20.0F + value};
            host.Run(1 + block * 13);
        }
        return host.fHeapCalls == 0;
    });
    if (result == EAlone::kNotSupported) {
        GTEST_SKIP() << "no filters of system calls here";
    }
    EXPECT_NE(result, EAlone::kSystemCall);
    EXPECT_NE(result, EAlone::kFalse) << "a call to the heap";
}

} // namespace
