// A reader and writer as a client supplies them: bytes in memory, and a status of its own.
#pragma once

#include "FileLib/Interface/IByteStreams.h"

#include <algorithm>
#include <vector>

namespace NSFileLibInternals {

class CClientStream : public NSFileLib::IByteReader, public NSFileLib::IByteWriter {
public:
    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override {
        for (int64_t i = 0; i < count; ++i) {
            buffer[i] = fBytes.at(static_cast<size_t>(position + i));
        }
        return fStatus;
    }
    int32_t Write(int64_t position, int64_t count, const uint8_t* source) override {
        fBytes.resize(static_cast<size_t>(position + count));
        std::copy(source, source + count, fBytes.begin() + position);
        return fStatus;
    }
    int32_t GetSize(int64_t* size) override {
        *size = static_cast<int64_t>(fBytes.size());
        return fStatus;
    }

    std::vector<uint8_t> fBytes;
    int32_t fStatus = NSLichen::kByteStreamStatus_OK;
};

} // namespace NSFileLibInternals
