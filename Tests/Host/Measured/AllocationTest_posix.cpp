#include "Tests/Host/HostLoop.h"

#include "Tests/Host/Measured/CountingAllocator.h"
#include <map>

// Memory that runs out at any one place: the call says so, nothing leaks, and the library goes on.

namespace {

// A good life of a loop, up to the first call that fails.
LOPResult LiveOnce(const Bytes& bytes) {
    LOPResult result = LOPInitializeDLL();
    if (result != kLOPResult_OK) {
        return result;
    }
    LOPHandle loop = 0;
    result = CreateLoop(loop, bytes);
    if (result == kLOPResult_OK) {
        result = LOPSetOutputSampleRate(loop, 32000);
    }
    static float left[200000];
    static float right[200000];
    LOPInfo info{};
    if (result == kLOPResult_OK) {
        result = LOPGetInfo(loop, sizeof info, &info);
    }
    LOPRenderBuffers buffers{left, info.fChannels == 2 ? right : nullptr};
    if (result == kLOPResult_OK) {
        result = LOPRenderSlice(loop, 0, 200000, &buffers);
    }
    if (result == kLOPResult_OK) {
        result = LOPStartPreview(loop);
    }
    if (result == kLOPResult_OK) {
        result = LOPRenderPreviewBatch(loop, 1000, &buffers);
        LOPStopPreview(loop);
    }
    LOPDelete(&loop);
    EXPECT_EQ(loop, 0U);
    LOPUninitializeDLL();
    return result;
}

TEST(Allocations, EachOneMayFail) {
    for (const Bytes& bytes : {DrumLOP2(16, true), DrumTSL(), DrumLOP()}) {
        // The first life makes what lasts as long as the process.
        ASSERT_EQ(LiveOnce(bytes), kLOPResult_OK);
        const SAllocationCounts before = GetAllocationCounts();
        FailAllocation(-1);
        ASSERT_EQ(LiveOnce(bytes), kLOPResult_OK);
        const int64_t count = CountedAllocations();
        const SAllocationCounts after = GetAllocationCounts();
        ASSERT_EQ(after.fTaken - before.fTaken, after.fGiven - before.fGiven) << "a leak";
        ASSERT_GT(count, 50);

        std::map<LOPResult, int64_t> results;
        for (int64_t index = 0; index < count; ++index) {
            const SAllocationCounts start = GetAllocationCounts();
            FailAllocation(index);
            const LOPResult result = LiveOnce(bytes);
            FailAllocation(-1);
            const SAllocationCounts end = GetAllocationCounts();
            ++results[result];
            // The failed one was counted as taken.
            EXPECT_EQ(end.fTaken - start.fTaken - 1, end.fGiven - start.fGiven)
                << "allocation " << index;
        }
        // A sort that gets no room for its copy goes on without; a file library that cannot start
        // is a failure to open. A good file is never taken for a damaged one.
        for (const auto& [result, times] : results) {
            EXPECT_TRUE(result == kLOPResult_OutOfMemory || result == kLOPResult_OK ||
                        (result == kLOPResult_Undefined && times == 1))
                << result << ", " << times << " times";
        }
        EXPECT_GT(results[kLOPResult_OutOfMemory], count / 2);
        EXPECT_EQ(LiveOnce(bytes), kLOPResult_OK);
    }
}

} // namespace
