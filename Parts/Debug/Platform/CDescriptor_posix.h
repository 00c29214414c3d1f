#pragma once

#include <unistd.h>

namespace NSDebugPackage {

/// Owns what open answered, also when that was a refusal.
class CDescriptor {
public:
    explicit CDescriptor(int file) noexcept : fFile(file) {}
    ~CDescriptor() { Close(); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    bool IsOpen() const noexcept { return fFile >= 0; }
    int Get() const noexcept { return fFile; }

    /// False when the file is not open, or when what the system had put off fails now.
    bool Close() noexcept {
        const bool closed = IsOpen() && close(fFile) == 0;
        fFile = -1;
        return closed;
    }

private:
    int fFile;
};

} // namespace NSDebugPackage
