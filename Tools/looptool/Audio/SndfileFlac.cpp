#include "looptool/Audio/Sndfile.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <sndfile.h>
#include <vector>

namespace NSLoopTool {

namespace {

// What the encoder writes to. Exceptions must not pass through the C library: the first one is
// kept.
struct SFlacTarget {
    COutputFile* fOutput = nullptr; // null: only the size is wanted
    sf_count_t fPosition = 0;
    sf_count_t fLength = 0;
    // The encoder went back to complete its header, which a pipe has let through: the library does
    // not see the failed seek, so what it writes there is dropped.
    bool fIsBehind = false;
    std::exception_ptr fFailure;

    template <class Action>
    bool Try(Action action) {
        if (fFailure == nullptr && fOutput != nullptr) {
            try {
                action(*fOutput);
            } catch (...) {
                fFailure = std::current_exception();
            }
        }
        return fFailure == nullptr;
    }
    void RaiseFailure() const {
        if (fFailure != nullptr) {
            std::rethrow_exception(fFailure);
        }
    }
};

sf_count_t Length(void* user) {
    return static_cast<SFlacTarget*>(user)->fLength;
}

sf_count_t Seek(sf_count_t offset, int whence, void* user) {
    auto& target = *static_cast<SFlacTarget*>(user);
    const sf_count_t base =
        whence == SEEK_SET ? 0 : (whence == SEEK_CUR ? target.fPosition : target.fLength);
    const sf_count_t wanted = base + offset;
    if (target.fOutput != nullptr && !target.fOutput->CanSeek()) {
        target.fIsBehind = wanted < target.fLength;
    } else if (wanted != target.fPosition &&
               !target.Try([&](COutputFile& output) { output.Seek(wanted); })) {
        return -1;
    }
    target.fPosition = wanted;
    return wanted;
}

sf_count_t Read(void* /*target*/, sf_count_t /*count*/, void* /*user*/) {
    return 0;
}

sf_count_t Write(const void* source, sf_count_t count, void* user) {
    auto& target = *static_cast<SFlacTarget*>(user);
    if (!target.fIsBehind && !target.Try([&](COutputFile& output) {
            output.Write(source, static_cast<size_t>(count));
        })) {
        return 0;
    }
    target.fPosition += count;
    target.fLength = std::max(target.fLength, target.fPosition);
    return count;
}

sf_count_t Tell(void* user) {
    return static_cast<SFlacTarget*>(user)->fPosition;
}

class CFlacEncoder final : public CABCFlacEncoder {
public:
    CFlacEncoder(COutputFile* output, const std::string& name, int32_t rate, size_t channels,
                 int32_t bits)
        : fName(name) {
        fTarget.fOutput = output;
        SF_INFO info{};
        info.samplerate = rate;
        info.channels = static_cast<int>(channels);
        info.format = SF_FORMAT_FLAC | (bits == 16 ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24);
        fFile = sf_open_virtual(&fCallbacks, SFM_WRITE, &info, &fTarget);
        if (fFile == nullptr) {
            fTarget.RaiseFailure();
            throw CToolFailure(name + ": cannot write FLAC: " + sf_strerror(nullptr));
        }
    }
    CFlacEncoder(const CFlacEncoder&) = delete;
    CFlacEncoder& operator=(const CFlacEncoder&) = delete;
    ~CFlacEncoder() override {
        if (fFile != nullptr) {
            sf_close(fFile);
        }
    }

    void Write(const int32_t* samples, size_t frames) override {
        const auto count = static_cast<sf_count_t>(frames);
        const bool isWritten = sf_writef_int(fFile, samples, count) == count;
        fTarget.RaiseFailure();
        if (!isWritten) {
            throw CToolFailure(fName + ": cannot write FLAC: " + sf_strerror(fFile));
        }
    }
    // Into a pipe the header cannot be completed, which the library may call an error.
    void Finish() override {
        sf_close(fFile);
        fFile = nullptr;
        fTarget.RaiseFailure();
    }
    uint64_t GetLength() const { return static_cast<uint64_t>(fTarget.fLength); }

private:
    const std::string fName;
    SF_VIRTUAL_IO fCallbacks{Length, Seek, Read, ::NSLoopTool::Write, Tell};
    SFlacTarget fTarget;
    SNDFILE* fFile = nullptr;
};

} // namespace

bool HasSndfile() {
    return true;
}

std::unique_ptr<CABCFlacEncoder> MakeFlacEncoder(COutputFile& output, const std::string& name,
                                                 int32_t rate, size_t channels, int32_t bits) {
    return std::make_unique<CFlacEncoder>(&output, name, rate, channels, bits);
}

std::optional<uint64_t> FlacSize(const SAudio& audio) {
    const size_t channels = audio.fPlanes.size();
    CFlacEncoder encoder(nullptr, "flac", audio.fSampleRate, channels, audio.fBitDepth);
    for (size_t first = 0; first < audio.GetFrameCount(); first += kLotFrames) {
        const size_t count = std::min(kLotFrames, audio.GetFrameCount() - first);
        std::vector<int32_t> lot(count * channels);
        for (size_t i = 0; i < lot.size(); ++i) {
            const auto sample =
                static_cast<uint32_t>(audio.fPlanes[i % channels][first + i / channels]);
            lot[i] = static_cast<int32_t>(sample << (32 - audio.fBitDepth));
        }
        encoder.Write(lot.data(), count);
    }
    encoder.Finish();
    return encoder.GetLength();
}

} // namespace NSLoopTool
