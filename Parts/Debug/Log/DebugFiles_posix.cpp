#include "Debug/Log/DebugFiles.h"

#include "Debug/Platform/CDescriptor_posix.h"
#include "Debug/Platform/WriteAll_posix.h"
#include "FileLib/Platform/UserFolders_posix.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace NSDebugPackage {

namespace {

std::string Native(const std::u16string& path) {
    return NSFileLibInternals::PosixFromNative(path);
}

int OpenFile(const std::u16string& path, int flags) {
    const std::string native = Native(path);
    return native.empty() ? -1 : open(native.c_str(), flags | O_CLOEXEC, 0666);
}

bool IsSameFile(int a, int b) {
    struct stat first {};
    struct stat second {};
    return fstat(a, &first) == 0 && fstat(b, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

bool CopyBytes(int source, int target) {
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0;
        }
        if (!WriteAll(target, buffer.data(), static_cast<size_t>(count))) {
            return false;
        }
    }
}

bool FindFolder(const char* key, const char* fallback, std::u16string& folder) {
    using namespace NSFileLibInternals;
    const std::string found = FindUserFolder(FindHomeFolder(), key, fallback);
    if (found.empty()) {
        return false;
    }
    folder = NativeFromPosix(found + "/");
    return true;
}

} // namespace

bool PathExists(const std::u16string& path) {
    struct stat status {};
    return stat(Native(path).c_str(), &status) == 0;
}

bool MakeFolder(const std::u16string& path) {
    return mkdir(Native(path).c_str(), 0777) == 0;
}

bool RemoveFile(const std::u16string& path) {
    return unlink(Native(path).c_str()) == 0;
}

bool CopyOneFile(const std::u16string& source, const std::u16string& target) {
    const CDescriptor from(OpenFile(source, O_RDONLY));
    if (!from.IsOpen()) {
        return false;
    }
    CDescriptor to(OpenFile(target, O_WRONLY | O_CREAT));
    // Emptied only now: the two names may be those of one file.
    return to.IsOpen() && !IsSameFile(from.Get(), to.Get()) && ftruncate(to.Get(), 0) == 0 &&
           CopyBytes(from.Get(), to.Get()) && to.Close();
}

bool FindDocumentsFolder(std::u16string& folder) {
    return FindFolder("DOCUMENTS", "Documents", folder);
}

bool FindDesktopFolder(std::u16string& folder) {
    return FindFolder("DESKTOP", "Desktop", folder);
}

CAppendFile::CAppendFile(const std::u16string& path)
    : fFile(OpenFile(path, O_WRONLY | O_CREAT | O_APPEND)) {}

CAppendFile::~CAppendFile() {
    if (fFile >= 0) {
        close(static_cast<int>(fFile));
    }
}

bool CAppendFile::Append(const char* bytes, size_t count) {
    return fFile >= 0 && WriteAll(static_cast<int>(fFile), bytes, count);
}

void CAppendFile::Flush() {
    if (fFile >= 0) {
        fsync(static_cast<int>(fFile));
    }
}

} // namespace NSDebugPackage
