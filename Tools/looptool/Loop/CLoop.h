#pragma once

#include "looptool/Audio/AudioReader.h"

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// One loop file, opened through the public interface; Ctrl-C stops the load.
/// Every failure is a CToolFailure that names the file.
class CLoop {
public:
    /// "-" is standard input. The library must be initialised. Without a function that takes the
    /// progress it has a bar of its own.
    explicit CLoop(const std::string& path, const ProgressFunction& progress = {});
    ~CLoop();
    CLoop(const CLoop&) = delete;
    CLoop& operator=(const CLoop&) = delete;

    const std::string& GetPath() const { return fPath; }
    /// The path as messages show it.
    const std::string& GetName() const { return fName; }
    const std::vector<uint8_t>& GetBytes() const { return fBytes; }
    LOPHandle GetHandle() const { return fHandle; }
    const LOPInfo& GetInfo() const { return fInfo; }
    bool IsStereo() const { return fInfo.fChannels == 2; }
    size_t GetChannels() const { return IsStereo() ? 2 : 1; }
    /// Empty when the loop has no creator texts. "\n" stands between the lines of a text.
    std::vector<std::string> GetCreatorTexts() const;
    LOPSliceInfo GetSliceInfo(int32_t index) const;

    /// The rate that slices and preview come at: the stored one, within the library's limits, until
    /// another is set. 0 sets nothing.
    int32_t GetOutputSampleRate() const { return fOutputRate; }
    void SetOutputSampleRate(int32_t rate);
    /// One plane for each channel.
    std::vector<std::vector<float>> RenderSlice(int32_t index) const;

    /// Thousandths of a beat per minute.
    void SetPreviewTempo(int32_t tempo);
    void StartPreview();
    void StopPreview();
    void RenderPreview(int32_t frames, float* left, float* right);

private:
    void Check(LOPResult result) const;

    const std::string fPath;
    const std::string fName;
    const std::vector<uint8_t> fBytes;
    LOPHandle fHandle = 0;
    LOPInfo fInfo{};
    int32_t fOutputRate = 0;
};

} // namespace NSLoopTool
