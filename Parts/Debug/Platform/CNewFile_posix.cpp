#include "Debug/Platform/CNewFile_posix.h"

#include <fcntl.h>

#include <cerrno>

namespace NSDebugPackage {

CNewFile::CNewFile(const std::string& path)
    : fPath(path), fFile(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)),
      fError(fFile.IsOpen() ? 0 : errno), fIsTemporary(fFile.IsOpen()) {}

CNewFile::~CNewFile() {
    if (fIsTemporary) {
        unlink(fPath.c_str());
    }
}

bool CNewFile::Finish() noexcept {
    const bool finished = fFile.Close();
    fIsTemporary = fIsTemporary && !finished;
    return finished;
}

} // namespace NSDebugPackage
