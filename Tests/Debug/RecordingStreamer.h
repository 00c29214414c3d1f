#pragma once

#include "Debug/ITraceOutputStreamer.h"

#include <string>
#include <vector>

// Keeps what a debugger writes.
class CRecordingStreamer : public NSDebugPackage::ITraceOutputStreamer {
public:
    void Write(const char* line, size_t bufferSize) override {
        fLines.emplace_back(line);
        fBufferSize = bufferSize;
    }
    void Flush() override { ++fFlushCount; }

    // What follows thread, time and indentation of 0.
    std::string GetText(size_t index) const { return fLines.at(index).substr(37); }

    std::vector<std::string> fLines;
    size_t fBufferSize = 0;
    int fFlushCount = 0;
};
