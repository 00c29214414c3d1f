// What the tests of media and containers share: hand-made files and a check of failures.
#pragma once

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

using namespace std::string_literals;

// This class, with this text.
#define EXPECT_RAISES_TEXT(X, text, statement)                                                     \
    try {                                                                                          \
        statement;                                                                                 \
        ADD_FAILURE() << #statement << " raised nothing";                                          \
    } catch (const X& failure) {                                                                   \
        EXPECT_STREQ(failure.what(), text);                                                        \
    }
#define EXPECT_RAISES(X, statement) EXPECT_RAISES_TEXT(X, "", statement)
#define EXPECT_VIOLATION(statement) EXPECT_RAISES(NSLichen::XFormatViolation, statement)

namespace NSPorter {

constexpr uint32_t kA = FourCharID("AAAA");
constexpr uint32_t kB = FourCharID("BBBB");
constexpr uint32_t kType = FourCharID("TYPE");
constexpr uint32_t kWave = FourCharID("WAVE");

inline const uint8_t* Raw(const std::string& bytes) {
    return reinterpret_cast<const uint8_t*>(bytes.data());
}

inline std::string BigEndian(size_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
            static_cast<char>(value >> 8), static_cast<char>(value)};
}

inline std::string LittleEndian(size_t value) {
    const std::string bytes = BigEndian(value);
    return {bytes.rbegin(), bytes.rend()};
}

inline std::string Native(size_t value) {
    return std::endian::native == std::endian::big ? BigEndian(value) : LittleEndian(value);
}

inline std::string Padded(const std::string& data) {
    return data.size() % 2 == 0 ? data : data + '\0';
}

inline std::string Chunk(const std::string& id, const std::string& data) {
    return id + BigEndian(data.size()) + Padded(data);
}

inline std::string RIFFChunk(const std::string& id, const std::string& data) {
    return id + LittleEndian(data.size()) + Padded(data);
}

// Borrowed and read-only; the string must outlive it.
inline CMemoryMedia MediaOf(const std::string& bytes) {
    return {static_cast<int64_t>(bytes.size()), Raw(bytes)};
}

inline std::string BytesOf(const CMedia& media) {
    const COwnedMemoryMedia copy(media);
    return {copy.GetData(), copy.GetData() + copy.GetLength()};
}

} // namespace NSPorter
