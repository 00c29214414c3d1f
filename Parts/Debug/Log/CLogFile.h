#pragma once

#include "Debug/Log/DebugFiles.h"
#include "Debug/Log/ITraceOutputStreamer.h"

#include <memory>
#include <string>

namespace NSDebugPackage {

/// A log file, made when its first line comes. Lines end in CR LF on every platform. What cannot be
/// written is lost without a word.
class CLogFile : public ITraceOutputStreamer {
public:
    /// `folder` ends in "\"; both texts are UTF-8. With `erase` a file of that name is deleted
    /// first; when that fails, a plain std::exception is raised.
    CLogFile(const std::string& fileName, const std::string& folder, bool erase);

    void Write(const char* line, size_t bufferSize) override;
    /// To the disk.
    void Flush() override;

private:
    std::u16string fPath;
    std::unique_ptr<CAppendFile> fFile; // null until the first line
};

} // namespace NSDebugPackage
