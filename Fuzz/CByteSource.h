#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

// Hands out a fuzzer's bytes as decisions; past their end everything is 0.
class CByteSource {
public:
    CByteSource(const uint8_t* bytes, size_t size) : fBytes(bytes), fSize(size) {}

    bool IsEmpty() const { return fPosition >= fSize; }

    uint8_t Byte() { return IsEmpty() ? uint8_t{0} : fBytes[fPosition++]; }

    uint32_t Word(int width) {
        uint32_t value = 0;
        for (int i = 0; i < width; ++i) {
            value = value << 8 | Byte();
        }
        return value;
    }

    int32_t Signed() { return static_cast<int32_t>(Word(4)); }

    // From 0 to `limit` - 1.
    uint32_t Below(uint32_t limit) { return Word(2) % limit; }

    std::vector<uint8_t> Take(size_t count) {
        count = std::min(count, fSize - std::min(fPosition, fSize));
        std::vector<uint8_t> taken(fBytes + fPosition, fBytes + fPosition + count);
        fPosition += count;
        return taken;
    }

    std::vector<uint8_t> Rest() { return Take(fSize); }

private:
    const uint8_t* const fBytes;
    const size_t fSize;
    size_t fPosition = 0;
};
