#include "Bindings/Cpp/LoopLibrary.hpp"

#include "Tests/Host/HostLoop.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using LoopLibrary::Bpm;
using LoopLibrary::Library;
using LoopLibrary::Loop;
using LoopLibrary::Result;

Result ResultOf(const std::function<void()>& call) {
    try {
        call();
        return Result::OK;
    } catch (const LoopLibrary::Error& error) {
        EXPECT_STREQ(error.what(), LoopLibrary::GetMessage(error.GetResult()));
        return error.GetResult();
    }
}

TEST(CppLoop, GivesWhatTheFunctionsGive) {
    Library library;
    const Bytes file = DrumLOP2();
    Loop loop = Loop::Open(file);
    loop.SetOutputSampleRate(48000);
    LOPInfo info{};
    ASSERT_EQ(LOPGetInfo(loop.GetHandle(), sizeof info, &info), kLOPResult_OK);
    EXPECT_EQ(loop.GetInfo().fSliceCount, info.fSliceCount);
    EXPECT_EQ(Loop::ReadInfo({file.data(), file.size()}).fPPQLength, info.fPPQLength);

    for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
        const LoopLibrary::Audio audio = loop.RenderSlice(slice);
        const auto frames = static_cast<size_t>(loop.GetSliceInfo(slice).fFrameCount);
        std::vector<float> left(frames);
        std::vector<float> right(frames);
        LOPRenderBuffers buffers{left.data(), right.data()};
        ASSERT_EQ(LOPRenderSlice(loop.GetHandle(), slice, static_cast<int32_t>(frames), &buffers),
                  kLOPResult_OK);
        EXPECT_EQ(audio.fLeft, left) << slice;
        EXPECT_EQ(audio.fRight, right) << slice;
    }

    // A second loop of the same file, pulled by the functions, sounds the same.
    Loop other = Loop::Open(file);
    other.SetOutputSampleRate(48000);
    loop.SetPreviewTempo(Bpm(97.5));
    ASSERT_EQ(LOPSetPreviewTempo(other.GetHandle(), 97500), kLOPResult_OK);
    loop.StartPreview();
    other.StartPreview();
    std::array<float, 1000> left{};
    float right[1000] = {};
    std::vector<float> otherLeft(1000);
    std::vector<float> otherRight(1000);
    for (int batch = 0; batch < 20; ++batch) {
        ASSERT_EQ(loop.RenderPreview(left, right), Result::OK);
        LOPRenderBuffers buffers{otherLeft.data(), otherRight.data()};
        ASSERT_EQ(LOPRenderPreviewBatch(other.GetHandle(), 1000, &buffers), kLOPResult_OK);
        ASSERT_TRUE(std::equal(left.begin(), left.end(), otherLeft.begin()));
        ASSERT_TRUE(std::equal(std::begin(right), std::end(right), otherRight.begin()));
    }

    const Loop mono = Loop::Open(DrumLOP2(16, false));
    EXPECT_TRUE(mono.RenderSlice(0).fRight.empty());
}

TEST(CppLoop, TellsFailuresInBothForms) {
    Result result{};
    Loop none = Loop::Open(std::vector<uint8_t>(100), result);
    EXPECT_EQ(result, Result::NotInitialized);
    Library library(result);
    ASSERT_EQ(result, Result::OK);
    EXPECT_EQ(ResultOf([] { Library second; }), Result::AlreadyInitialized);
    none = Loop::Open(std::vector<uint8_t>(100), result);
    EXPECT_EQ(result, Result::FileCorrupt);
    EXPECT_FALSE(none);

    Loop loop = Loop::Open(DrumLOP2());
    std::vector<float> few(3);
    loop.StartPreview();
    const std::pair<std::function<void()>, Result> rows[] = {
        {[] {
             Loop::Open({nullptr, 7});
         },
         Result::InvalidArgument},
        {[] { Loop::ReadInfo(std::string(100, 'x')); }, Result::FileCorrupt},
        {[&] { none.StartPreview(); }, Result::InvalidHandle},
        {[&] { static_cast<void>(none.GetInfo()); }, Result::InvalidHandle},
        {[&] { static_cast<void>(loop.RenderSlice(1000)); }, Result::InvalidSlice},
        {[&] { loop.RenderSlice(0, few, few); }, Result::InvalidArgument},
        {[&] {
             loop.RenderSlice(0, {few.data(), 1}, {few.data() + 1, 1});
         },
         Result::BufferTooSmall},
        {[&] { loop.StartPreview(); }, Result::PreviewRunning},
        {[&] { loop.SetOutputSampleRate(48000); }, Result::PreviewRunning},
        {[&] { loop.SetPreviewTempo(Bpm(97500)); }, Result::InvalidTempo},
        {[&] { loop.SetPreviewTempo(Bpm(1.0e300)); }, Result::InvalidTempo},
    };
    for (size_t row = 0; row < std::size(rows); ++row) {
        EXPECT_EQ(ResultOf(rows[row].first), rows[row].second) << row;
    }
}

TEST(CppLoop, StopsALoadByItsProgressAndPassesOnWhatThatThrows) {
    Library library;
    const Bytes file = DrumLOP2();
    std::vector<int> seen;
    Loop loop = Loop::Open(file, [&](int percent) { seen.push_back(percent); });
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 100);
    Result result{};
    loop = Loop::Open(
        file, [](int) { return false; }, result);
    EXPECT_EQ(result, Result::Aborted);
    EXPECT_FALSE(loop);
    EXPECT_THROW(Loop::Open(file, [](int) { throw std::logic_error("stop"); }), std::logic_error);
    EXPECT_TRUE(Loop::Open(file)); // nothing stayed locked
}

TEST(CppLoop, ClosesOnceAndMoves) {
    LOPHandle handle = 0;
    {
        Library library;
        {
            Loop first = Loop::Open(DrumLOP2());
            handle = first.GetHandle();
            first.StartPreview(); // a running preview does not keep it open
            Loop second = std::move(first);
            EXPECT_FALSE(first); // NOLINT: a moved-from loop names none
            Loop& same = second;
            second = std::move(same);
            EXPECT_TRUE(second); // NOLINT: moved to itself
            std::swap(first, second);
            EXPECT_EQ(first.GetHandle(), handle);
        }
        LOPInfo info{};
        EXPECT_EQ(LOPGetInfo(handle, sizeof info, &info), kLOPResult_InvalidHandle);
        Library moved = std::move(library);
    }
    Library again;
    EXPECT_FALSE((std::is_copy_constructible_v<Loop> || std::is_copy_constructible_v<Library>));
    EXPECT_FALSE((std::is_convertible_v<double, Bpm> || std::is_convertible_v<int, Bpm>));
    EXPECT_FALSE((std::is_constructible_v<LoopLibrary::Samples, const std::vector<float>&>));
    EXPECT_FALSE((std::is_constructible_v<LoopLibrary::Samples, std::vector<double>&>));
    EXPECT_FALSE((std::is_constructible_v<LoopLibrary::Bytes, std::vector<float>>));
}

} // namespace
