#include "Tests/Host/HostLoop.h"

#include <cstring>

// Loading: progress and stopping, failures and what they leave behind, the host's bytes.

namespace {

struct SProgress {
    std::vector<int32_t> fPercents;
    int32_t fAnswer = 0;
    size_t fAnswerAt = 0;
};

extern "C" int32_t NoteProgress(int32_t percent, void* user) {
    auto& progress = *static_cast<SProgress*>(user);
    progress.fPercents.push_back(percent);
    return progress.fPercents.size() == progress.fAnswerAt + 1 ? progress.fAnswer : 0;
}

Bytes LongLOP2(size_t frames) {
    NSLoopWriter::SLOP2File file;
    file.fLeft = NSLoopWriter::Plane(frames);
    return WriteLOP2(file);
}

TEST_F(CHostTest, ProgressRisesBlockByBlock) {
    SProgress progress;
    LOPHandle handle = 0;
    // Two whole blocks of 1048576 frames and a piece of a third.
    const size_t frames = 2 * 1048576 + 1048576 / 2;
    ASSERT_EQ(CreateLoop(handle, LongLOP2(frames), NoteProgress, &progress), kLOPResult_OK);
    EXPECT_EQ(progress.fPercents, (std::vector<int32_t>{0, 40, 80, 100}));
}

TEST_F(CHostTest, OnlyAnAnswerOfOneStopsTheLoadAndNotAtTheEnd) {
    const Bytes bytes = DrumLOP2();
    struct SCase {
        int32_t fAnswer;
        size_t fAnswerAt;
        LOPResult fExpected;
    };
    for (const SCase& c : {SCase{1, 0, kLOPResult_Aborted}, SCase{2, 0, kLOPResult_OK},
                           SCase{-1, 0, kLOPResult_OK}, SCase{1, 1, kLOPResult_OK}}) {
        SProgress progress;
        progress.fAnswer = c.fAnswer;
        progress.fAnswerAt = c.fAnswerAt;
        LOPHandle handle = 9;
        EXPECT_EQ(CreateLoop(handle, bytes, NoteProgress, &progress), c.fExpected);
        EXPECT_EQ(handle != 0, c.fExpected == kLOPResult_OK);
        LOPDelete(&handle);
    }
}

extern "C" int32_t AskAboutAnotherLoop(int32_t /*percent*/, void* user) {
    LOPInfo info{};
    EXPECT_EQ(LOPGetInfo(*static_cast<LOPHandle*>(user), sizeof info, &info), kLOPResult_OK);
    return 0;
}

TEST_F(CHostTest, TheCallbackMayAskAboutAnotherLoop) {
    const CHostLoop other(DrumLOP2());
    LOPHandle otherHandle = other.Get();
    LOPHandle handle = 0;
    EXPECT_EQ(CreateLoop(handle, DrumLOP2(), AskAboutAnotherLoop, &otherHandle), kLOPResult_OK);
}

TEST_F(CHostTest, EveryShortenedFileIsRefusedAndItsBytesStayUntouched) {
    for (const Bytes& whole : {DrumLOP2(), DrumTSL(), DrumLOP()}) {
        for (size_t size = 1; size < whole.size(); size += 1 + size / 7) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
            const Bytes given = cut; // NOLINT(performance-unnecessary-copy-initialization)
            LOPHandle handle = 1;
            EXPECT_EQ(CreateLoop(handle, given), kLOPResult_FileCorrupt) << size;
            EXPECT_EQ(handle, 0U);
            EXPECT_EQ(given, cut);
        }
    }
}

TEST_F(CHostTest, VersionsOfTheFormat) {
    using NSLoopWriter::SStoredVersion;
    struct SCase {
        uint32_t fMajor;
        uint32_t fMinor;
        bool fIsKnown;
    };
    for (const SCase& c :
         {SCase{0, 9, false}, SCase{1, 0, true}, SCase{1, 5, true}, SCase{2, 0, true},
          SCase{2, 7, true}, SCase{3, 9, true}, SCase{4, 0, false}}) {
        for (const auto form : {SStoredVersion::EForm::kShort, SStoredVersion::EForm::kLong}) {
            NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
            file.fHead.fVersion = {c.fMajor, c.fMinor};
            file.fHead.fVersion.fForm = form;
            if (!c.fIsKnown) {
                LOPHandle handle = 0;
                EXPECT_EQ(CreateLoop(handle, WriteLOP2(file)), kLOPResult_FileTooNew) << c.fMajor;
                continue;
            }
            file.fTesselExtraInfo.emplace();
            file.fCreatorInfo.emplace();
            const CHostLoop loop(WriteLOP2(file));
            LOPStartPreview(loop.Get());
            EXPECT_FALSE(IsSilent(loop.RenderPreview(4096, 4096)[0])) << c.fMajor;
        }
    }
}

TEST_F(CHostTest, ALoopOfNoLengthIsTold) {
    NSLoopWriter::STSLFile tsl = NSLoopWriter::MakeDrumTSL(DrumOptions(16, false));
    tsl.fBars = 0;
    tsl.fBeats = 0;
    const Bytes bytes = WriteTSL(tsl);
    LOPHandle handle = 1;
    EXPECT_EQ(CreateLoop(handle, bytes), kLOPResult_ZeroLoopLength);
    EXPECT_EQ(handle, 0U);
    LOPInfo info{};
    info.fPPQLength = 7;
    EXPECT_EQ(
        LOPGetInfoFromBuffer(static_cast<int32_t>(bytes.size()), bytes.data(), sizeof info, &info),
        kLOPResult_ZeroLoopLength);
    EXPECT_EQ(info.fChannels, 1) << "filled as far as it was known";
    EXPECT_EQ(info.fPPQLength, 0);

    NSLoopWriter::SLOP2File lop2 = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    lop2.fGeneralInfo.fBars = 0;
    lop2.fGeneralInfo.fBeats = 0;
    EXPECT_EQ(CreateLoop(handle, WriteLOP2(lop2)), kLOPResult_FileCorrupt);
}

// Of a file of no known kind nothing is written; of any other the record is zeroed first.
TEST_F(CHostTest, InfoFromBufferZeroesTheRecordBeforeItReadsTheFile) {
    Bytes damaged = DrumLOP2();
    damaged.resize(200);
    Bytes unknown = damaged;
    unknown[0] ^= 1;
    NSLoopWriter::SLOP2File newer = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    newer.fHead.fVersion = {4, 0};
    struct SCase {
        Bytes fBytes;
        LOPResult fExpected;
        int fFill;
    };
    for (const SCase& c : {SCase{damaged, kLOPResult_FileCorrupt, 0},
                           SCase{WriteLOP2(newer), kLOPResult_FileTooNew, 0},
                           SCase{unknown, kLOPResult_FileCorrupt, 0xEE}}) {
        LOPInfo info;
        LOPInfo expected;
        std::memset(&info, 0xEE, sizeof info);
        std::memset(&expected, c.fFill, sizeof expected);
        EXPECT_EQ(LOPGetInfoFromBuffer(static_cast<int32_t>(c.fBytes.size()), c.fBytes.data(),
                                       sizeof info, &info),
                  c.fExpected);
        EXPECT_EQ(std::memcmp(&info, &expected, sizeof info), 0) << c.fExpected << " " << c.fFill;
    }
}

} // namespace
