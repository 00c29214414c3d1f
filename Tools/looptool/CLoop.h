#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// The initialised library, for as long as it lives. One at a time.
class CLibrary {
public:
    CLibrary();
    ~CLibrary();
    CLibrary(const CLibrary&) = delete;
    CLibrary& operator=(const CLibrary&) = delete;
};

/// One loop file, opened through the public interface with a progress bar; Ctrl-C stops the load.
/// Every failure is a CToolFailure that names the file.
class CLoop {
public:
    explicit CLoop(const std::string& path);
    ~CLoop();
    CLoop(const CLoop&) = delete;
    CLoop& operator=(const CLoop&) = delete;

    const std::string& GetPath() const { return fPath; }
    LOPInfo GetInfo() const;
    bool IsStereo() const { return GetInfo().fChannels == 2; }
    /// Empty when the loop has no creator texts.
    std::vector<std::string> GetCreatorTexts() const;
    LOPSliceInfo GetSliceInfo(int32_t index) const;
    void SetOutputSampleRate(int32_t rate);
    /// One plane for each channel.
    std::vector<std::vector<float>> RenderSlice(int32_t index) const;

    void SetPreviewTempo(int32_t tempo);
    void StartPreview();
    void StopPreview();
    void RenderPreview(int32_t frames, float* left, float* right);

private:
    void Check(LOPResult result) const;

    const CLibrary fLibrary;
    const std::string fPath;
    LOPHandle fHandle = 0;
};

} // namespace NSLoopTool
