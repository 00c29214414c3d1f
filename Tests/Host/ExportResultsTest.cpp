#include "Tests/Host/HostLoop.h"

#include <array>
#include <cstring>
#include <functional>

// Every result of every export, each argument wrong on its own, and pairs that show the order of
// the checks: the first wrong thing decides.

namespace {

struct SCheck {
    const char* fWhat;
    LOPResult fExpected;
    std::function<LOPResult()> fCall;
};

void RunChecks(const std::vector<SCheck>& checks) {
    for (const SCheck& check : checks) {
        EXPECT_EQ(check.fCall(), check.fExpected) << check.fWhat;
    }
}

TEST(Exports, AnswerNothingElseBeforeInitialisation) {
    LOPHandle handle = 77;
    RunChecks({
        {"create", kLOPResult_NotInitialized,
         [&] { return LOPCreate(nullptr, nullptr, 0, nullptr, nullptr); }},
        {"info", kLOPResult_NotInitialized, [] { return LOPGetInfo(0, 0, nullptr); }},
        {"info from buffer", kLOPResult_NotInitialized,
         [] { return LOPGetInfoFromBuffer(0, nullptr, 0, nullptr); }},
        {"creator info", kLOPResult_NotInitialized,
         [] { return LOPGetCreatorInfo(0, 0, nullptr); }},
        {"slice info", kLOPResult_NotInitialized, [] { return LOPGetSliceInfo(0, 0, 0, nullptr); }},
        {"render slice", kLOPResult_NotInitialized,
         [] { return LOPRenderSlice(0, 0, 0, nullptr); }},
        {"rate", kLOPResult_NotInitialized, [] { return LOPSetOutputSampleRate(0, 0); }},
        {"tempo", kLOPResult_NotInitialized, [] { return LOPSetPreviewTempo(0, 0); }},
        {"start", kLOPResult_NotInitialized, [] { return LOPStartPreview(0); }},
        {"stop", kLOPResult_NotInitialized, [] { return LOPStopPreview(0); }},
        {"batch", kLOPResult_NotInitialized, [] { return LOPRenderPreviewBatch(0, 0, nullptr); }},
    });
    LOPDelete(&handle);
    EXPECT_EQ(handle, 77U);
    LOPUninitializeDLL();

    EXPECT_EQ(LOPInitializeDLL(), kLOPResult_OK);
    EXPECT_EQ(LOPInitializeDLL(), kLOPResult_AlreadyInitialized);
    LOPUninitializeDLL();
    EXPECT_EQ(LOPInitializeDLL(), kLOPResult_OK);
    LOPUninitializeDLL();
}

TEST_F(CHostTest, CreateChecksItsArguments) {
    const Bytes bytes = DrumLOP2();
    LOPHandle handle = 5;
    RunChecks({
        {"no handle", kLOPResult_InvalidArgument,
         [&] { return LOPCreate(nullptr, bytes.data(), 100, nullptr, nullptr); }},
        {"no buffer", kLOPResult_InvalidArgument,
         [&] { return LOPCreate(&handle, nullptr, 100, nullptr, nullptr); }},
        {"size 0", kLOPResult_InvalidArgument,
         [&] { return LOPCreate(&handle, bytes.data(), 0, nullptr, nullptr); }},
        {"size -1", kLOPResult_InvalidArgument,
         [&] { return LOPCreate(&handle, bytes.data(), -1, nullptr, nullptr); }},
    });
    EXPECT_EQ(handle, 5U) << "an argument error changes nothing";
    EXPECT_EQ(LOPCreate(&handle, "no loop at all, whatever", 24, nullptr, nullptr),
              kLOPResult_FileCorrupt);
    EXPECT_EQ(handle, 0U);
}

TEST_F(CHostTest, EveryExportChecksInOrder) {
    const CHostLoop stereo(DrumLOP2(16, true));
    const CHostLoop mono(DrumLOP2(16, false));
    const LOPHandle loop = stereo.Get();
    const Bytes bytes = DrumLOP2();
    const auto bytesSize = static_cast<int32_t>(bytes.size());
    const int32_t slices = stereo.GetInfo().fSliceCount;
    const int32_t frames = stereo.GetSliceInfo(0).fFrameCount;
    LOPInfo info{};
    LOPSliceInfo sliceInfo{};
    LOPCreatorInfo creator{};
    std::vector<float> left(static_cast<size_t>(frames));
    std::vector<float> right(left.size());
    LOPRenderBuffers both{left.data(), right.data()};
    LOPRenderBuffers leftOnly{left.data(), nullptr};
    LOPRenderBuffers rightOnly{nullptr, right.data()};
    LOPRenderBuffers same{left.data(), left.data()};
    LOPRenderBuffers none{nullptr, nullptr};

    RunChecks({
        {"info: handle first", kLOPResult_InvalidHandle, [&] { return LOPGetInfo(0, 0, nullptr); }},
        {"info: a wild handle", kLOPResult_InvalidHandle,
         [&] { return LOPGetInfo(loop + 1, 36, &info); }},
        {"info: record before size", kLOPResult_InvalidArgument,
         [&] { return LOPGetInfo(loop, 0, nullptr); }},
        {"info: size", kLOPResult_InvalidSize, [&] { return LOPGetInfo(loop, 31, &info); }},
        {"info", kLOPResult_OK, [&] { return LOPGetInfo(loop, 36, &info); }},

        {"from buffer: no bytes", kLOPResult_InvalidArgument,
         [&] { return LOPGetInfoFromBuffer(0, bytes.data(), 0, &info); }},
        {"from buffer: no buffer", kLOPResult_InvalidArgument,
         [&] { return LOPGetInfoFromBuffer(9, nullptr, 0, &info); }},
        {"from buffer: no record", kLOPResult_InvalidArgument,
         [&] { return LOPGetInfoFromBuffer(bytesSize, bytes.data(), 0, nullptr); }},
        {"from buffer: size before content", kLOPResult_InvalidSize,
         [&] { return LOPGetInfoFromBuffer(1, bytes.data(), 31, &info); }},
        {"from buffer: content", kLOPResult_FileCorrupt,
         [&] { return LOPGetInfoFromBuffer(1, bytes.data(), 36, &info); }},
        {"from buffer", kLOPResult_OK,
         [&] { return LOPGetInfoFromBuffer(bytesSize, bytes.data(), 36, &info); }},

        {"creator: handle", kLOPResult_InvalidHandle,
         [&] { return LOPGetCreatorInfo(1, 0, nullptr); }},
        {"creator: record", kLOPResult_InvalidArgument,
         [&] { return LOPGetCreatorInfo(loop, 0, nullptr); }},
        {"creator: size", kLOPResult_InvalidSize,
         [&] { return LOPGetCreatorInfo(loop, 1279, &creator); }},
        {"creator: none", kLOPResult_NoCreatorInfo,
         [&] { return LOPGetCreatorInfo(loop, 1280, &creator); }},

        {"slice info: handle", kLOPResult_InvalidHandle,
         [&] { return LOPGetSliceInfo(1, -1, 0, nullptr); }},
        {"slice info: record", kLOPResult_InvalidArgument,
         [&] { return LOPGetSliceInfo(loop, -1, 0, nullptr); }},
        {"slice info: size", kLOPResult_InvalidSize,
         [&] { return LOPGetSliceInfo(loop, -1, 7, &sliceInfo); }},
        {"slice info: below", kLOPResult_InvalidSlice,
         [&] { return LOPGetSliceInfo(loop, -1, 8, &sliceInfo); }},
        {"slice info: above", kLOPResult_InvalidSlice,
         [&] { return LOPGetSliceInfo(loop, slices, 8, &sliceInfo); }},

        {"slice: handle", kLOPResult_InvalidHandle,
         [&] { return LOPRenderSlice(1, -1, 0, nullptr); }},
        {"slice: no buffers", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(loop, -1, 0, nullptr); }},
        {"slice: both null", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(loop, -1, 0, &none); }},
        {"slice: one array twice", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(loop, 0, frames, &same); }},
        {"slice: stereo without right", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(loop, 0, frames, &leftOnly); }},
        {"slice: stereo without left", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(loop, 0, frames, &rightOnly); }},
        {"slice: mono with right", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(mono.Get(), 0, frames, &both); }},
        {"slice: mono without left", kLOPResult_InvalidArgument,
         [&] { return LOPRenderSlice(mono.Get(), 0, frames, &rightOnly); }},
        {"slice: index before room", kLOPResult_InvalidSlice,
         [&] { return LOPRenderSlice(loop, slices, 0, &both); }},
        {"slice: room", kLOPResult_BufferTooSmall,
         [&] { return LOPRenderSlice(loop, 0, frames - 1, &both); }},
        {"slice: negative room", kLOPResult_BufferTooSmall,
         [&] { return LOPRenderSlice(loop, 0, -1, &both); }},
        {"slice", kLOPResult_OK, [&] { return LOPRenderSlice(loop, 0, frames, &both); }},

        {"rate: handle", kLOPResult_InvalidHandle, [&] { return LOPSetOutputSampleRate(1, 0); }},
        {"rate: low", kLOPResult_InvalidSampleRate,
         [&] { return LOPSetOutputSampleRate(loop, 11024); }},
        {"rate: high", kLOPResult_InvalidSampleRate,
         [&] { return LOPSetOutputSampleRate(loop, 1000001); }},
        {"rate: lowest", kLOPResult_OK, [&] { return LOPSetOutputSampleRate(loop, 11025); }},
        {"rate: highest", kLOPResult_OK, [&] { return LOPSetOutputSampleRate(loop, 1000000); }},

        {"tempo: handle", kLOPResult_InvalidHandle, [&] { return LOPSetPreviewTempo(1, 0); }},
        {"tempo: low", kLOPResult_InvalidTempo, [&] { return LOPSetPreviewTempo(loop, 19999); }},
        {"tempo: high", kLOPResult_InvalidTempo, [&] { return LOPSetPreviewTempo(loop, 450001); }},
        {"tempo: lowest", kLOPResult_OK, [&] { return LOPSetPreviewTempo(loop, 20000); }},
        {"tempo: highest", kLOPResult_OK, [&] { return LOPSetPreviewTempo(loop, 450000); }},

        {"stop: handle", kLOPResult_InvalidHandle, [&] { return LOPStopPreview(1); }},
        {"stop: not running", kLOPResult_PreviewNotRunning, [&] { return LOPStopPreview(loop); }},
        {"start: handle", kLOPResult_InvalidHandle, [&] { return LOPStartPreview(1); }},
        {"start", kLOPResult_OK, [&] { return LOPStartPreview(loop); }},
        {"start: running", kLOPResult_PreviewRunning, [&] { return LOPStartPreview(loop); }},
        {"rate: range before running", kLOPResult_InvalidSampleRate,
         [&] { return LOPSetOutputSampleRate(loop, 1); }},
        {"rate: running", kLOPResult_PreviewRunning,
         [&] { return LOPSetOutputSampleRate(loop, 1000000); }},
        {"stop", kLOPResult_OK, [&] { return LOPStopPreview(loop); }},

        {"batch: handle", kLOPResult_InvalidHandle,
         [&] { return LOPRenderPreviewBatch(1, -1, nullptr); }},
        {"batch: too many", kLOPResult_InvalidArgument,
         [&] { return LOPRenderPreviewBatch(loop, 65537, &both); }},
        {"batch: negative", kLOPResult_InvalidArgument,
         [&] { return LOPRenderPreviewBatch(loop, -1, &both); }},
        {"batch: no buffers", kLOPResult_InvalidArgument,
         [&] { return LOPRenderPreviewBatch(loop, 1, nullptr); }},
        {"batch: one array twice", kLOPResult_InvalidArgument,
         [&] { return LOPRenderPreviewBatch(loop, 1, &same); }},
        {"batch: no left", kLOPResult_InvalidArgument,
         [&] { return LOPRenderPreviewBatch(loop, 1, &rightOnly); }},
        {"batch: empty", kLOPResult_OK, [&] { return LOPRenderPreviewBatch(loop, 0, &both); }},
        {"batch: mono mix", kLOPResult_OK,
         [&] { return LOPRenderPreviewBatch(loop, 1, &leftOnly); }},
    });
}

TEST_F(CHostTest, TheLargestBatchIsTaken) {
    const CHostLoop loop(DrumLOP2());
    std::vector<float> left(65536, 9.0f);
    LOPRenderBuffers buffers{left.data(), nullptr};
    EXPECT_EQ(LOPRenderPreviewBatch(loop.Get(), 65536, &buffers), kLOPResult_OK);
    EXPECT_EQ(std::count(left.begin(), left.end(), 0.0f), 65536) << "a stopped preview is silent";
}

TEST_F(CHostTest, RecordsAreZeroedToTheHostsSizeAndNoFurther) {
    const CHostLoop loop(DrumLOP2(24));
    std::array<uint8_t, 48> record{};
    LOPInfo info{};
    const auto fill = [&](int32_t size) {
        record.fill(0xEE);
        EXPECT_EQ(LOPGetInfo(loop.Get(), size, reinterpret_cast<LOPInfo*>(record.data())),
                  kLOPResult_OK);
        std::memcpy(&info, record.data(), sizeof info);
    };
    fill(32);
    EXPECT_EQ(record[32], 0xEE) << "a host without fBitDepth keeps its bytes";
    fill(36);
    EXPECT_EQ(info.fBitDepth, 24);
    EXPECT_EQ(record[36], 0xEE);
    fill(40);
    EXPECT_EQ(record[39], 0);
    EXPECT_EQ(record[40], 0xEE);
}

TEST_F(CHostTest, DeleteIsSilentAboutWhatItDoesNotDelete) {
    const Bytes bytes = DrumLOP2();
    LOPHandle handle = 0;
    ASSERT_EQ(CreateLoop(handle, bytes), kLOPResult_OK);
    const LOPHandle copy = handle;
    LOPDelete(nullptr);
    ASSERT_EQ(LOPStartPreview(handle), kLOPResult_OK);
    LOPDelete(&handle);
    EXPECT_EQ(handle, copy) << "a running preview keeps its loop";
    ASSERT_EQ(LOPStopPreview(handle), kLOPResult_OK);
    LOPDelete(&handle);
    EXPECT_EQ(handle, 0U);
    LOPHandle stale = copy;
    LOPDelete(&stale);
    EXPECT_EQ(stale, copy) << "a stale handle keeps its value";
    EXPECT_EQ(LOPStartPreview(copy), kLOPResult_InvalidHandle);
}

TEST_F(CHostTest, UninitialisingEndsLoopsWithRunningPreviews) {
    LOPHandle handle = 0;
    ASSERT_EQ(CreateLoop(handle, DrumLOP2()), kLOPResult_OK);
    ASSERT_EQ(LOPStartPreview(handle), kLOPResult_OK);
    LOPUninitializeDLL();
    EXPECT_EQ(LOPStopPreview(handle), kLOPResult_NotInitialized);
    ASSERT_EQ(LOPInitializeDLL(), kLOPResult_OK);
    EXPECT_EQ(LOPStopPreview(handle), kLOPResult_InvalidHandle);
}

} // namespace
