#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

namespace NSLoopTool {

/// The bytes of a file as memory, read only; pages come from the disk when they are first touched.
/// The bytes are those of the moment of each touch if another program writes the file meanwhile.
class CMappedFile {
public:
    /// Empty, with IsOpen false, for what cannot be mapped.
    explicit CMappedFile(const std::filesystem::path& path);
    ~CMappedFile();
    CMappedFile(const CMappedFile&) = delete;
    CMappedFile& operator=(const CMappedFile&) = delete;

    bool IsOpen() const { return fIsOpen; }
    /// An empty file is open and has no bytes.
    std::span<const uint8_t> GetBytes() const { return fBytes; }

private:
    std::span<const uint8_t> fBytes;
    bool fIsOpen = false;
};

} // namespace NSLoopTool
