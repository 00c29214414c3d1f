#include "Tests/Host/HostLoop.h"

#include <array>
#include <cstring>

// Every result of every export, each argument wrong on its own, and pairs that show the order of
// the checks: the first wrong thing decides.

namespace {

TEST(Exports, AnswerNothingElseBeforeInitialisation) {
    LOPHandle handle = 77;
    EXPECT_EQ(LOPCreate(nullptr, nullptr, 0, nullptr, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPGetInfo(0, 0, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPGetInfoFromBuffer(0, nullptr, 0, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPGetCreatorInfo(0, 0, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPGetSliceInfo(0, 0, 0, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPRenderSlice(0, 0, 0, nullptr), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPSetOutputSampleRate(0, 0), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPSetPreviewTempo(0, 0), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPStartPreview(0), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPStopPreview(0), kLOPResult_NotInitialized);
    EXPECT_EQ(LOPRenderPreviewBatch(0, 0, nullptr), kLOPResult_NotInitialized);
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
    EXPECT_EQ(LOPCreate(nullptr, bytes.data(), 100, nullptr, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPCreate(&handle, nullptr, 100, nullptr, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPCreate(&handle, bytes.data(), 0, nullptr, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPCreate(&handle, bytes.data(), -1, nullptr, nullptr), kLOPResult_InvalidArgument);
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
    LOPCreatorInfo creator{"untouched", "", "", "", "x"};
    std::vector<float> left(static_cast<size_t>(frames));
    std::vector<float> right(left.size());
    LOPRenderBuffers both{left.data(), right.data()};
    LOPRenderBuffers leftOnly{left.data(), nullptr};
    LOPRenderBuffers rightOnly{nullptr, right.data()};
    LOPRenderBuffers same{left.data(), left.data()};
    LOPRenderBuffers none{nullptr, nullptr};

    EXPECT_EQ(LOPGetInfo(0, 0, nullptr), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPGetInfo(loop + 1, 36, &info), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPGetInfo(loop, 0, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetInfo(loop, 31, &info), kLOPResult_InvalidSize);
    EXPECT_EQ(LOPGetInfo(loop, 36, &info), kLOPResult_OK);

    EXPECT_EQ(LOPGetInfoFromBuffer(0, bytes.data(), 0, &info), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetInfoFromBuffer(9, nullptr, 0, &info), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetInfoFromBuffer(bytesSize, bytes.data(), 0, nullptr),
              kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetInfoFromBuffer(1, bytes.data(), 31, &info), kLOPResult_InvalidSize);
    EXPECT_EQ(LOPGetInfoFromBuffer(1, bytes.data(), 36, &info), kLOPResult_FileCorrupt);
    EXPECT_EQ(LOPGetInfoFromBuffer(bytesSize, bytes.data(), 36, &info), kLOPResult_OK);

    EXPECT_EQ(LOPGetCreatorInfo(1, 0, nullptr), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPGetCreatorInfo(loop, 0, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetCreatorInfo(loop, 1279, &creator), kLOPResult_InvalidSize);
    EXPECT_STREQ(creator.fText1, "untouched");
    EXPECT_EQ(LOPGetCreatorInfo(loop, 1280, &creator), kLOPResult_NoCreatorInfo);
    EXPECT_STREQ(creator.fText1, "");
    EXPECT_STREQ(creator.fText5, "");

    EXPECT_EQ(LOPGetSliceInfo(1, -1, 0, nullptr), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPGetSliceInfo(loop, -1, 0, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPGetSliceInfo(loop, -1, 7, &sliceInfo), kLOPResult_InvalidSize);
    EXPECT_EQ(LOPGetSliceInfo(loop, -1, 8, &sliceInfo), kLOPResult_InvalidSlice);
    EXPECT_EQ(LOPGetSliceInfo(loop, slices, 8, &sliceInfo), kLOPResult_InvalidSlice);

    EXPECT_EQ(LOPRenderSlice(1, -1, 0, nullptr), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPRenderSlice(loop, -1, 0, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(loop, -1, 0, &none), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(loop, 0, frames, &same), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(loop, 0, frames, &leftOnly), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(loop, 0, frames, &rightOnly), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(mono.Get(), 0, frames, &both), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(mono.Get(), 0, frames, &rightOnly), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderSlice(loop, slices, 0, &both), kLOPResult_InvalidSlice);
    EXPECT_EQ(LOPRenderSlice(loop, 0, frames - 1, &both), kLOPResult_BufferTooSmall);
    EXPECT_EQ(LOPRenderSlice(loop, 0, -1, &both), kLOPResult_BufferTooSmall);
    EXPECT_EQ(LOPRenderSlice(loop, 0, frames, &both), kLOPResult_OK);

    EXPECT_EQ(LOPSetOutputSampleRate(1, 0), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 11024), kLOPResult_InvalidSampleRate);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 1000001), kLOPResult_InvalidSampleRate);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 11025), kLOPResult_OK);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 1000000), kLOPResult_OK);

    EXPECT_EQ(LOPSetPreviewTempo(1, 0), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPSetPreviewTempo(loop, 19999), kLOPResult_InvalidTempo);
    EXPECT_EQ(LOPSetPreviewTempo(loop, 450001), kLOPResult_InvalidTempo);
    EXPECT_EQ(LOPSetPreviewTempo(loop, 20000), kLOPResult_OK);
    EXPECT_EQ(LOPSetPreviewTempo(loop, 450000), kLOPResult_OK);

    EXPECT_EQ(LOPStopPreview(1), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPStopPreview(loop), kLOPResult_PreviewNotRunning);
    EXPECT_EQ(LOPStartPreview(1), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPStartPreview(loop), kLOPResult_OK);
    EXPECT_EQ(LOPStartPreview(loop), kLOPResult_PreviewRunning);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 1), kLOPResult_InvalidSampleRate);
    EXPECT_EQ(LOPSetOutputSampleRate(loop, 1000000), kLOPResult_PreviewRunning);
    EXPECT_EQ(LOPStopPreview(loop), kLOPResult_OK);

    EXPECT_EQ(LOPRenderPreviewBatch(1, -1, nullptr), kLOPResult_InvalidHandle);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 65537, &both), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, -1, &both), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 1, nullptr), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 1, &same), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 1, &rightOnly), kLOPResult_InvalidArgument);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 0, &both), kLOPResult_OK);
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 1, &leftOnly), kLOPResult_OK);
    std::vector<float> largest(65536, 9.0f);
    LOPRenderBuffers room{largest.data(), nullptr};
    EXPECT_EQ(LOPRenderPreviewBatch(mono.Get(), 65536, &room), kLOPResult_OK);
    EXPECT_EQ(largest, std::vector<float>(65536)) << "a stopped preview is silent";
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

TEST_F(CHostTest, EachOfManyLoopsIsFoundUntilItIsDeleted) {
    const Bytes bytes = DrumLOP2();
    std::array<LOPHandle, 40> handles{};
    for (LOPHandle& handle : handles) {
        ASSERT_EQ(CreateLoop(handle, bytes), kLOPResult_OK);
    }
    const std::array<LOPHandle, 40> given = handles;
    for (size_t step = 0; step < handles.size(); ++step) {
        const size_t deleted = step * 17 % handles.size();
        LOPDelete(&handles[deleted]);
        for (size_t i = 0; i < handles.size(); ++i) {
            EXPECT_EQ(LOPSetPreviewTempo(given[i], 90000),
                      handles[i] == 0 ? kLOPResult_InvalidHandle : kLOPResult_OK);
        }
    }
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
