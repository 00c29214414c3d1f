#include "looptool/Loop/LoadReport.h"

#include "looptool/Loop/BrokenChunk.h"
#include "looptool/Loop/ResultText.h"
#include "looptool/System/Interrupt.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/FailureToResult.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <exception>
#include <memory>

namespace NSLoopTool {

namespace {

class CAskingCallback final : public NSLOPDLL::CLOP2DecompressCallback {
public:
    CAskingCallback(const std::function<bool(int64_t)>& shouldStop, int64_t frames)
        : fShouldStop(shouldStop), fFrames(frames) {}

    bool ShouldStop(uint32_t framesDone) override {
        return fShouldStop(fFrames < 1 ? 100 : int64_t{framesDone} * 100 / fFrames);
    }

private:
    const std::function<bool(int64_t)>& fShouldStop;
    const int64_t fFrames;
};

std::string DetailOf(const std::vector<uint8_t>& bytes, const std::exception& exception) {
    const std::string chunk = BrokenChunk(bytes);
    const char* const words = exception.what();
    const std::string said = words == nullptr ? "" : words;
    return chunk + (chunk.empty() || said.empty() ? "" : ": ") + said;
}

} // namespace

SLoadReport ReportLoad(const std::vector<uint8_t>& bytes,
                       const std::function<bool(int64_t)>& shouldStop) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    if (!NSLOPDLL::CTesselFile::IsKnownFile(media)) {
        return {kLOPResult_FileCorrupt, ""};
    }
    try {
        const NSLOPDLL::CTesselFile file(&media);
        NSLOPDLL::CTesselFileInfo info;
        file.GetFileInfo(info);
        CAskingCallback callback(shouldStop, info.fWaveSampleInfo.fFrames);
        std::unique_ptr<NSLOPDLL::CABCWaveSample> sample = file.ReadWaveSample(callback);
        const NSLOPDLL::CLOPObject loop(&media, sample);
        LOPCreatorInfo texts{};
        if (loop.HasCreatorInfo()) {
            loop.GetCreatorInfo(texts);
        }
        return {};
    } catch (const std::exception& exception) {
        return {NSLOPDLL::ResultOfException(exception), DetailOf(bytes, exception)};
    }
}

std::string LoadFaultText(const std::vector<uint8_t>& bytes, const SLoadReport& report) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    if (!NSLOPDLL::CTesselFile::IsKnownFile(media)) {
        return "not a loop file";
    }
    return (report.fResult == kLOPResult_FileCorrupt ? "a damaged loop file"
                                                     : ResultText(report.fResult)) +
           (report.fDetail.empty() ? "" : " (" + report.fDetail + ")");
}

std::string FailedLoadText(const std::vector<uint8_t>& bytes, LOPResult result) {
    const SLoadReport report = ReportLoad(bytes, [](int64_t) { return WasInterrupted(); });
    return LoadFaultText(bytes, {result, report.fDetail});
}

} // namespace NSLoopTool
