#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

namespace NSLoopTool {

// What the standard library does not offer alike on both systems. The functions that answer null
// set errno.

std::FILE* OpenForReading(const std::filesystem::path& path);

/// The bytes that are there, at most `count`, after waiting for the first: 0 at the end, -1 (errno)
/// for a failure and once WasInterrupted(). For streams that nothing else reads.
std::ptrdiff_t ReadSome(std::FILE* file, void* bytes, size_t count);

/// Opens what exists as it is: a device, a pipe.
std::FILE* OpenInPlace(const std::filesystem::path& path);

/// Makes a file that did not exist; null, with errno EEXIST, if something has the name.
std::FILE* CreateNewFile(const std::filesystem::path& path);

/// False, with errno set, when the file cannot move there.
bool SeekTo(std::FILE* file, int64_t position);

/// Whether this user may write to the existing file.
bool MayWrite(const std::filesystem::path& path);

/// Tells files apart, whatever names lead to them.
struct SFileIdentity {
    uint64_t fVolume = 0;
    uint64_t fFile = 0;

    friend bool operator<(const SFileIdentity& a, const SFileIdentity& b) {
        return std::pair(a.fVolume, a.fFile) < std::pair(b.fVolume, b.fFile);
    }
};

/// Of the file that the path leads to, links followed; nothing if there is none.
std::optional<SFileIdentity> IdentityOfFile(const std::filesystem::path& path);

/// A number that no other process of this moment has.
uint64_t ProcessNumber();

} // namespace NSLoopTool
