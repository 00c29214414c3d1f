#include "looptool/Files/InputFile.h"

#include "looptool/Console/SafeText.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/SystemFile.h"
#include "looptool/System/Terminal.h"
#include "looptool/System/ToolFailure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <set>

namespace NSLoopTool {

namespace {

constexpr size_t kMaxBytes = std::numeric_limits<int32_t>::max();
constexpr size_t kLotBytes = size_t{1} << 20;

struct SCloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

class CInputsRead {
public:
    void Add(const SFileIdentity& identity) {
        const std::lock_guard lock(fMutex);
        fFiles.insert(identity);
    }
    bool Has(const SFileIdentity& identity) {
        const std::lock_guard lock(fMutex);
        return fFiles.contains(identity);
    }

private:
    std::mutex fMutex;
    std::set<SFileIdentity> fFiles;
};

CInputsRead& InputsRead() {
    static CInputsRead inputs;
    return inputs;
}

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw CToolFailure(InputName(path) + ": " + reason);
}

std::string ReasonOf(int error) {
    return error == ENOENT ? "no such file" : std::strerror(error);
}

std::vector<uint8_t> ReadToEnd(std::FILE* file, const std::string& path) {
    std::vector<uint8_t> bytes;
    size_t length = 0;
    for (;;) {
        StopIfInterrupted();
        if (length == bytes.size()) {
            bytes.resize(std::max(length * 2, kLotBytes));
        }
        const size_t room = std::min(bytes.size() - length, kLotBytes);
        const std::ptrdiff_t count = ReadSome(file, bytes.data() + length, room);
        const int error = errno;
        if (count < 0) {
            StopIfInterrupted();
            Fail(path, ReasonOf(error));
        }
        if (count == 0) {
            break;
        }
        length += static_cast<size_t>(count);
        if (length > kMaxBytes) {
            Fail(path, "too large: more than 2 GB");
        }
    }
    bytes.resize(length);
    if (bytes.empty()) {
        Fail(path, "is empty");
    }
    return bytes;
}

} // namespace

std::string InputName(const std::string& path) {
    return path == "-" ? "standard input" : SafeText(path);
}

void NoteInputFile(const std::string& path) {
    const std::filesystem::path native = PathOfArgument(path);
    std::error_code error;
    if (std::filesystem::is_directory(native, error)) {
        Fail(path, "is a folder");
    }
    if (const auto identity = IdentityOfFile(native)) {
        InputsRead().Add(*identity);
    }
}

std::vector<uint8_t> ReadInputFile(const std::string& path) {
    if (path == "-") {
        MakeStreamBinary(stdin);
        return ReadToEnd(stdin, path);
    }
    NoteInputFile(path);
    const std::unique_ptr<std::FILE, SCloseFile> file(OpenForReading(PathOfArgument(path)));
    if (file == nullptr) {
        Fail(path, ReasonOf(errno));
    }
    return ReadToEnd(file.get(), path);
}

bool WasRead(const std::string& path) {
    const auto identity = IdentityOfFile(PathOfArgument(path));
    return identity && InputsRead().Has(*identity);
}

} // namespace NSLoopTool
