// What the tests of media and containers share: hand-made files and a check of failures.
#pragma once

#include "Failure/XClasses.h"
#include "PorterPackage/Core/CMemoryMedia.h"
#include "PorterPackage/Core/COwnedMemoryMedia.h"
#include "PorterPackage/Core/FourCharID.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace std::string_literals;

// Exactly this class, with this text.
#define EXPECT_RAISES(X, text, statement)                                                          \
    try {                                                                                          \
        statement;                                                                                 \
        ADD_FAILURE() << #statement << " raised nothing";                                          \
    } catch (const X& failure) {                                                                   \
        EXPECT_STREQ(failure.what(), text);                                                        \
    } catch (...) {                                                                                \
        ADD_FAILURE() << #statement << " raised something else";                                   \
    }

namespace NSPorter {

inline std::string BigEndian(uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
            static_cast<char>(value >> 8), static_cast<char>(value)};
}

inline std::string LittleEndian(uint32_t value) {
    const std::string bytes = BigEndian(value);
    return {bytes.rbegin(), bytes.rend()};
}

inline std::string Padded(const std::string& data) {
    return data.size() % 2 == 0 ? data : data + '\0';
}

inline std::string Chunk(const std::string& id, const std::string& data) {
    return id + BigEndian(static_cast<uint32_t>(data.size())) + Padded(data);
}

inline std::string RIFFChunk(const std::string& id, const std::string& data) {
    return id + LittleEndian(static_cast<uint32_t>(data.size())) + Padded(data);
}

// A borrowed, read-only media; the string must outlive it.
inline CMemoryMedia MediaOf(const std::string& bytes) {
    return {static_cast<int64_t>(bytes.size()), reinterpret_cast<const uint8_t*>(bytes.data())};
}

inline std::string BytesOf(const CMedia& media) {
    std::string bytes(static_cast<size_t>(media.GetLength()), '\0');
    media.ReadBytes(0, media.GetLength(), reinterpret_cast<uint8_t*>(bytes.data()));
    return bytes;
}

inline const uint8_t* Raw(const std::string& bytes) {
    return reinterpret_cast<const uint8_t*>(bytes.data());
}

} // namespace NSPorter
