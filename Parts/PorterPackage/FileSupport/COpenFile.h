#pragma once

#include "FileLib/Interface/IOpenFiles.h"
#include "PorterPackage/Core/Media/CMedia.h"
#include "PorterPackage/FileSupport/SpecHandles.h"

#include <cstdint>
#include <memory>
#include <string>

namespace NSFileLibSupport {

/// Open flags. Without kOpenFile_SafeSave the file is created, and one that exists loses its bytes
/// at once. With it the file stays as it is until Commit.
constexpr uint32_t kOpenFile_Plain = 0;
constexpr uint32_t kOpenFile_SafeSave = 1;

/// A media over a file that is open for reading and writing. Nobody else can open it meanwhile.
class COpenFile : public NSPorter::CMedia {
public:
    /// XLocked for a safe save over a read-only file, XCreate, XNotFound...
    COpenFile(const DirHandle& folder, const std::u16string& name, uint32_t flags);

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override;

    /// Makes a safe save the file's new content; the last operation on the media. Nothing to do for
    /// a plain one.
    void Commit();

private:
    /// One of the two is set.
    std::unique_ptr<NSFileLib::IOpenReadWriteFile> fPlainFile;
    std::unique_ptr<NSFileLib::ISafeOpenReadWriteFile> fSafeFile;
    /// The open file's own.
    NSFileLib::IByteReader* fReader = nullptr;
    NSFileLib::IByteWriter* fWriter = nullptr;
};

} // namespace NSFileLibSupport
