#include "looptool/Files/COutputFile.h"

#include "looptool/Console/SafeText.h"
#include "looptool/Files/InputFile.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/SystemFile.h"
#include "looptool/System/Terminal.h"
#include "looptool/System/ToolFailure.h"

#include <atomic>
#include <cerrno>
#include <cstring>

namespace NSLoopTool {

namespace {

namespace fs = std::filesystem;

// What a chain of links ends at, there or not: replacing a link itself would cut the chain.
fs::path FollowLinks(fs::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
        const fs::path next = fs::read_symlink(path, error);
        if (error) {
            break;
        }
        path = path.parent_path() / next;
    }
    return path;
}

} // namespace

COutputFile::COutputFile(const std::string& path) : fPath(path) {
    if (path == "-") {
        MakeStreamBinary(stdout);
        fFile = stdout;
        return;
    }
    if (WasRead(path)) {
        throw CToolFailure(SafeText(path) + ": is the input too; give the output another name",
                           kExitCode_Usage);
    }
    fTarget = FollowLinks(PathOfArgument(path));
    std::error_code error;
    const fs::file_status status = fs::status(fTarget, error);
    if (fs::is_directory(status)) {
        throw CToolFailure(SafeText(path) + ": is a folder");
    }
    if (!fs::exists(status)) {
        OpenBeside();
    } else if (!fs::is_regular_file(status)) {
        fFile = OpenInPlace(fTarget);
    } else if (!MayWrite(fTarget)) {
        Fail(EACCES);
    } else {
        OpenBeside();
        fs::permissions(fProvisional, status.permissions(), error);
    }
    if (fFile == nullptr) {
        Fail(errno);
    }
}

COutputFile::~COutputFile() {
    if (fFile != nullptr && fFile != stdout) {
        std::fclose(fFile);
    }
    if (!fProvisional.empty()) {
        std::error_code ignored;
        fs::remove(fProvisional, ignored);
    }
}

void COutputFile::OpenBeside() {
    static std::atomic<uint32_t> gNumber{0};
    do {
        fProvisional = fTarget.parent_path() / (".looptool-" + std::to_string(ProcessNumber()) +
                                                "-" + std::to_string(gNumber.fetch_add(1)));
        fFile = CreateNewFile(fProvisional);
    } while (fFile == nullptr && errno == EEXIST);
    if (fFile == nullptr) {
        fProvisional.clear();
        Fail(errno);
    }
}

void COutputFile::Write(const void* bytes, size_t count) {
    if (std::fwrite(bytes, 1, count, fFile) != count) {
        Fail(errno);
    }
}

void COutputFile::Flush() {
    if (std::fflush(fFile) != 0) {
        Fail(errno);
    }
}

void COutputFile::Seek(int64_t position) {
    if (!SeekTo(fFile, position)) {
        Fail(errno);
    }
}

void COutputFile::Commit() {
    Flush();
    std::FILE* const file = fFile;
    fFile = nullptr;
    if (file != stdout && std::fclose(file) != 0) {
        Fail(errno);
    }
    if (fProvisional.empty()) {
        return;
    }
    std::error_code error;
    fs::rename(fProvisional, fTarget, error);
    if (error) {
        throw CToolFailure(SafeText(fPath) + ": cannot write: " + error.message());
    }
    fProvisional.clear();
}

void COutputFile::Fail(int error) const {
    StopIfInterrupted();
    const std::string name = fPath == "-" ? "standard output" : SafeText(fPath);
    throw CToolFailure(name + ": cannot write: " + std::strerror(error));
}

void RefuseToReplace(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(PathOfArgument(path), error);
    if (path != "-" && (fs::is_regular_file(status) || fs::is_directory(status))) {
        throw CToolFailure(SafeText(path) + ": exists already; --force replaces it",
                           kExitCode_Usage);
    }
}

void MakeFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(PathOfArgument(path), error);
    if (!error && !fs::is_directory(PathOfArgument(path), error)) {
        error = std::make_error_code(std::errc::not_a_directory);
    }
    if (error) {
        throw CToolFailure(SafeText(path) + ": cannot make the folder: " + error.message());
    }
}

void WriteOutputFile(const std::string& path, const void* bytes, size_t count) {
    COutputFile output(path);
    output.Write(bytes, count);
    output.Commit();
}

void FinishStandardOutput() {
    const bool failedBefore = std::ferror(stdout) != 0;
    const bool failedNow = std::fflush(stdout) != 0;
    const int error = errno;
    if (failedBefore || failedNow) {
        StopIfInterrupted();
        throw CToolFailure(std::string("standard output: cannot write") +
                           (failedNow ? std::string(": ") + std::strerror(error) : ""));
    }
}

} // namespace NSLoopTool
