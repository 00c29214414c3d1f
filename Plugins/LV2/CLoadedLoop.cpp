#include "CLoadedLoop.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <mutex>

namespace {

// The library is linked into the plug-in, so nobody else ends it; it stays initialised from the
// first load on. Loads of several instances may come from several workers.
bool IsReady() {
    static const bool ready = [] {
        static LoopLibrary::Result result{};
        static const LoopLibrary::Library library(result);
        return result == LoopLibrary::Result::OK;
    }();
    return ready;
}

} // namespace

std::unique_ptr<CLoadedLoop> CLoadedLoop::Load(const std::string& path, double rate,
                                               std::string& reason) noexcept {
    try {
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        if (!file.is_open() || bytes.empty()) {
            reason = "cannot be read";
            return nullptr;
        }
        if (!IsReady()) {
            reason = "the library cannot start";
            return nullptr;
        }
        LoopLibrary::Loop loop = LoopLibrary::Loop::Open(bytes);
        loop.SetOutputSampleRate(static_cast<int32_t>(std::lround(rate)));
        const LOPInfo info = loop.GetInfo();
        auto loaded = std::make_unique<CLoadedLoop>();
        loaded->fQuarters = static_cast<double>(info.fPPQLength) / LOP_PPQ;
        for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
            loaded->fAudio.push_back(loop.RenderSlice(slice));
        }
        for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
            const LoopLibrary::Audio& audio = loaded->fAudio[static_cast<std::size_t>(slice)];
            LoopLibrary::PlacedSlice placed;
            placed.fLeft = audio.fLeft.data();
            placed.fRight = audio.fRight.empty() ? nullptr : audio.fRight.data();
            placed.fFrames = static_cast<int64_t>(audio.fLeft.size());
            placed.fQuarter = static_cast<double>(loop.GetSliceInfo(slice).fPPQPosition) / LOP_PPQ;
            loaded->fSlices.push_back(placed);
        }
        return loaded;
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "an unexpected failure";
    }
    return nullptr;
}
