#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"
#include "Tests/Host/DrumBytes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

// What the host tests share: they use the library as any host does, through its exports alone.

using Planes = std::vector<std::vector<float>>;

inline bool IsSilent(const std::vector<float>& samples) {
    return std::all_of(samples.begin(), samples.end(),
                       [](float sample) { return std::abs(sample) < 1e-4f; });
}

class CHostTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(LOPInitializeDLL(), kLOPResult_OK); }
    void TearDown() override { LOPUninitializeDLL(); }
};

inline LOPResult CreateLoop(LOPHandle& handle, const Bytes& bytes,
                            LOPCreateCallback callback = nullptr, void* userData = nullptr) {
    return LOPCreate(&handle, bytes.data(), static_cast<int32_t>(bytes.size()), callback, userData);
}

// An open loop; the library must be initialised.
class CHostLoop {
public:
    explicit CHostLoop(const Bytes& bytes) { EXPECT_EQ(CreateLoop(fHandle, bytes), kLOPResult_OK); }
    ~CHostLoop() {
        LOPStopPreview(fHandle);
        LOPDelete(&fHandle);
    }
    CHostLoop(const CHostLoop&) = delete;
    CHostLoop& operator=(const CHostLoop&) = delete;

    LOPHandle Get() const { return fHandle; }
    LOPInfo GetInfo() const {
        LOPInfo info{};
        EXPECT_EQ(LOPGetInfo(fHandle, sizeof info, &info), kLOPResult_OK);
        return info;
    }
    LOPSliceInfo GetSliceInfo(int32_t slice) const {
        LOPSliceInfo info{};
        EXPECT_EQ(LOPGetSliceInfo(fHandle, slice, sizeof info, &info), kLOPResult_OK);
        return info;
    }
    Planes RenderSlice(int32_t slice) const {
        const int32_t frames = GetSliceInfo(slice).fFrameCount;
        const bool stereo = GetInfo().fChannels == 2;
        Planes planes(stereo ? 2 : 1, std::vector<float>(static_cast<size_t>(frames)));
        LOPRenderBuffers buffers{planes.front().data(), stereo ? planes.back().data() : nullptr};
        EXPECT_EQ(LOPRenderSlice(fHandle, slice, frames, &buffers), kLOPResult_OK);
        return planes;
    }
    // The next frames of the preview, left and right, in batches of the given size.
    Planes RenderPreview(size_t frames, size_t batch) const {
        Planes planes(2, std::vector<float>(frames));
        for (size_t done = 0; done < frames; done += batch) {
            LOPRenderBuffers buffers{planes[0].data() + done, planes[1].data() + done};
            const size_t count = std::min(batch, frames - done);
            EXPECT_EQ(LOPRenderPreviewBatch(fHandle, static_cast<int32_t>(count), &buffers),
                      kLOPResult_OK);
        }
        return planes;
    }

private:
    LOPHandle fHandle = 0;
};
