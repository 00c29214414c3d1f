#pragma once

#include <cstdio>
#include <string>

namespace NSLoopTool {

/// A file being written, or standard output for the path "-". Until Commit it is a provisional
/// thing: a file that is dropped earlier is removed. Failures are CToolFailure and name the file.
class COutputFile {
public:
    explicit COutputFile(const std::string& path);
    ~COutputFile();
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;

    void Write(const void* bytes, size_t count);
    void Commit();

private:
    [[noreturn]] void Fail() const;

    const std::string fPath;
    std::FILE* fFile = nullptr;
    const bool fIsStandardOutput;
};

} // namespace NSLoopTool
