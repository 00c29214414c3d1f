#include "CLoadedLoop.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

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

// Quarters. A shorter loop would begin more slices in a block than an audio call has time for.
constexpr double kShortest = 1.0 / 64.0;

// False for what is not a file, cannot be read or is larger than any loop: a pipe would never end.
bool ReadFile(const std::string& path, std::vector<char>& bytes) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return false;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size == 0 || size > std::numeric_limits<int32_t>::max()) {
        return false;
    }
    bytes.resize(size);
    std::ifstream file(path, std::ios::binary);
    return static_cast<bool>(file.read(bytes.data(), static_cast<std::streamsize>(size)));
}

} // namespace

std::unique_ptr<CLoadedLoop> CLoadedLoop::Load(const std::string& path, double rate,
                                               std::string& reason) noexcept {
    try {
        std::vector<char> bytes;
        if (!ReadFile(path, bytes)) {
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
        if (loaded->fQuarters < kShortest) {
            reason = "too short to be repeated";
            return nullptr;
        }
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
