#pragma once

#include "PorterPackage/Core/Media/CMedia.h"
#include "PorterPackage/FileSupport/COpenFile.h"
#include "PorterPackage/FileSupport/SpecHandles.h"

#include <memory>
#include <string>

namespace NSFileLibSupport {

/// A media over a new file in the temporary folder, which is deleted with the media. A file that
/// cannot be deleted then is left behind, and nothing is raised.
class COpenTemporaryFile : public NSPorter::CMedia {
public:
    /// The file's name has the extension of the wanted one.
    explicit COpenTemporaryFile(const std::u16string& wantedName);
    ~COpenTemporaryFile() override;
    COpenTemporaryFile(const COpenTemporaryFile&) = delete;
    COpenTemporaryFile& operator=(const COpenTemporaryFile&) = delete;

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override;

    const FileHandle& GetFile() const { return fUniqueFile.fFile; }

private:
    /// Deletes the file at the end.
    struct SUniqueFile {
        explicit SUniqueFile(const std::u16string& wantedName);
        ~SUniqueFile();
        SUniqueFile(const SUniqueFile&) = delete;
        SUniqueFile& operator=(const SUniqueFile&) = delete;

        FileHandle fFile;
    };

    /// In this order: the file is closed before it is deleted.
    SUniqueFile fUniqueFile;
    COpenFile fOpenFile;
};

} // namespace NSFileLibSupport
