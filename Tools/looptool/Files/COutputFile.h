#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

namespace NSLoopTool {

/// A file being written, or standard output for the path "-". What stood there before stays whole
/// until Commit: the bytes go to a new file beside it, which then takes its place, keeps its rights
/// and is reached through the same links. Dropped without Commit, it leaves nothing behind. What is
/// no regular file (a device, a pipe) is opened as it is and never removed.
///
/// Failures are CToolFailure and name the file. A file that was read before is refused.
class COutputFile {
public:
    explicit COutputFile(const std::string& path);
    ~COutputFile();
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;

    void Write(const void* bytes, size_t count);
    /// Hands what is held back to a pipe or device at once.
    void Flush();
    /// Whether Seek works: of a new regular file.
    bool CanSeek() const { return !fProvisional.empty(); }
    void Seek(int64_t position);
    void Commit();

private:
    void OpenBeside();
    [[noreturn]] void Fail(int error) const;

    const std::string fPath;
    std::FILE* fFile = nullptr;
    std::filesystem::path fTarget;      // links followed
    std::filesystem::path fProvisional; // empty: written in place
};

/// Raises CToolFailure, with the exit code of wrong usage, when something stands at the path.
void RefuseToReplace(const std::string& path);

/// Makes the folder, with those above it. CToolFailure names it when that is not possible.
void MakeFolder(const std::string& path);

/// Writes a whole file.
void WriteOutputFile(const std::string& path, const void* bytes, size_t count);

/// Ends what was printed: raises CToolFailure when standard output did not take all of it.
void FinishStandardOutput();

} // namespace NSLoopTool
