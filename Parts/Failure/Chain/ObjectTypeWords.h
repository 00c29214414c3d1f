#pragma once

#include "Failure/Chain/CFixedName.h"

#include <cstdint>

namespace NSLichen {

/// The words that say what a failure is about. Throw sites take them from here and never spell one
/// out.
constexpr CFixedName RangeWord() {
    return CFixedName("range");
}
constexpr CFixedName LengthWord() {
    return CFixedName("length");
}
constexpr CFixedName MemoryWord() {
    return CFixedName("memory");
}
constexpr CFixedName FormatWord() {
    return CFixedName("format");
}
constexpr CFixedName BufferWord() {
    return CFixedName("buffer");
}
constexpr CFixedName DllWord() {
    return CFixedName("dll");
}
constexpr CFixedName DiskWord() {
    return CFixedName("disk");
}
constexpr CFixedName VolumeWord() {
    return CFixedName("volume");
}
constexpr CFixedName DriveWord() {
    return CFixedName("drive");
}
constexpr CFixedName FileWord() {
    return CFixedName("file");
}
constexpr CFixedName DriverWord() {
    return CFixedName("driver");
}
constexpr CFixedName NetworkWord() {
    return CFixedName("network");
}
constexpr CFixedName SocketWord() {
    return CFixedName("socket");
}
constexpr CFixedName PortWord() {
    return CFixedName("port");
}
constexpr CFixedName MessageWord() {
    return CFixedName("message");
}
constexpr CFixedName HandleWord() {
    return CFixedName("handle");
}
constexpr CFixedName SymbolWord() {
    return CFixedName("symbol");
}
constexpr CFixedName InterfaceWord() {
    return CFixedName("interface");
}
constexpr CFixedName ApiWord() {
    return CFixedName("api");
}
constexpr CFixedName ThreadWord() {
    return CFixedName("thread");
}
constexpr CFixedName PropertyWord() {
    return CFixedName("property");
}
constexpr CFixedName AuthenticationWord() {
    return CFixedName("authentication");
}
constexpr CFixedName UserWord() {
    return CFixedName("user");
}
constexpr CFixedName PasswordWord() {
    return CFixedName("password");
}
constexpr CFixedName ReferenceWord() {
    return CFixedName("reference");
}
constexpr CFixedName ServerWord() {
    return CFixedName("server");
}
constexpr CFixedName ItemWord() {
    return CFixedName("item");
}
constexpr CFixedName MagicWord() {
    return CFixedName("magic");
}
constexpr CFixedName PathWord() {
    return CFixedName("path");
}
constexpr CFixedName UnicodeWord() {
    return CFixedName("unicode");
}
constexpr CFixedName FileHandleWord() {
    return CFixedName("file_handle");
}
constexpr CFixedName DirectoryWord() {
    return CFixedName("directory");
}

/// The word that this module adds to the fixed ones: a loop file of any kind.
constexpr CFixedName LopFileWord() {
    return CFixedName("lop_file");
}

/// The fixed words by index. The index travels inside packed integers, so their order never
/// changes.
uint32_t GetObjectTypeWordCount();
/// Empty for an index past the table.
CFixedName GetObjectTypeWord(uint32_t index);

} // namespace NSLichen
