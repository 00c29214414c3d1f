#include "looptool/System/SystemFile.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

namespace NSLoopTool {

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return _wfopen(path.c_str(), L"rb");
}

std::ptrdiff_t ReadSome(std::FILE* file, void* bytes, size_t count) {
    const size_t length = std::fread(bytes, 1, count, file);
    return length == 0 && std::ferror(file) != 0 ? -1 : static_cast<std::ptrdiff_t>(length);
}

std::FILE* OpenInPlace(const std::filesystem::path& path) {
    return _wfopen(path.c_str(), L"wb");
}

// The runtime's fopen has no mode for files that must be new.
std::FILE* CreateNewFile(const std::filesystem::path& path) {
    const int descriptor =
        _wopen(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

bool SeekTo(std::FILE* file, int64_t position) {
    return _fseeki64(file, position, SEEK_SET) == 0;
}

bool MayWrite(const std::filesystem::path& path) {
    constexpr int kWrite = 2;
    return _waccess(path.c_str(), kWrite) == 0;
}

std::optional<SFileIdentity> IdentityOfFile(const std::filesystem::path& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    const BOOL known = GetFileInformationByHandle(file, &information);
    CloseHandle(file);
    if (known == 0) {
        return std::nullopt;
    }
    return SFileIdentity{information.dwVolumeSerialNumber,
                         uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow};
}

uint64_t ProcessNumber() {
    return GetCurrentProcessId();
}

} // namespace NSLoopTool
