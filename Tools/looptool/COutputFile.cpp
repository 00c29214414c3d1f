#include "looptool/COutputFile.h"

#include "looptool/NativePath.h"
#include "looptool/Terminal.h"
#include "looptool/ToolFailure.h"

#include <cerrno>
#include <cstring>

namespace NSLoopTool {

COutputFile::COutputFile(const std::string& path) : fPath(path), fIsStandardOutput(path == "-") {
    if (fIsStandardOutput) {
        MakeStandardOutputBinary();
        fFile = stdout;
    } else {
        fFile = OpenForWriting(path);
    }
    if (fFile == nullptr) {
        Fail();
    }
}

COutputFile::~COutputFile() {
    if (fFile != nullptr && !fIsStandardOutput) {
        std::fclose(fFile);
        std::error_code ignored;
        std::filesystem::remove(PathOfArgument(fPath), ignored);
    }
}

void COutputFile::Write(const void* bytes, size_t count) {
    if (std::fwrite(bytes, 1, count, fFile) != count) {
        Fail();
    }
}

void COutputFile::Commit() {
    std::FILE* const file = fFile;
    if (std::fflush(file) != 0) {
        Fail();
    }
    fFile = nullptr;
    if (!fIsStandardOutput && std::fclose(file) != 0) {
        Fail();
    }
}

void COutputFile::Fail() const {
    const std::string name = fIsStandardOutput ? "standard output" : fPath;
    throw CToolFailure(name + ": cannot write: " + std::strerror(errno));
}

} // namespace NSLoopTool
