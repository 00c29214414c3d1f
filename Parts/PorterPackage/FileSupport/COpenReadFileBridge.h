#pragma once

#include "FileLib/Interface/IOpenFiles.h"
#include "PorterPackage/Core/Media/CMedia.h"
#include "PorterPackage/FileSupport/CRobustFileSpec.h"

#include <memory>

namespace NSFileLibSupport {

/// A media over a file that is open for reading. Reading past the end raises XRead, writing
/// XIllegalCallSequence.
class COpenReadFileBridge : public NSPorter::CMedia {
public:
    explicit COpenReadFileBridge(std::unique_ptr<NSFileLib::IOpenReadFile> file);
    explicit COpenReadFileBridge(const FileHandle& file);

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override;

private:
    std::unique_ptr<NSFileLib::IOpenReadFile> fFile;
};

/// Opens the file that is meant. XNotFound.
std::unique_ptr<NSPorter::CMedia> OpenRobust(const CRobustFileSpec& spec);

} // namespace NSFileLibSupport
