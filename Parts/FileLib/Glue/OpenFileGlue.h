#pragma once

#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/OpenFileImpl.h"
#include "FileLib/Interface/IOpenFiles.h"

#include <cstdint>
#include <memory>

namespace NSFileLibInternals {

// Open files behind their interfaces. Each is its own reader and writer, and invalid without an
// implementation.

class COpenReadFileGlue final : public NSFileLib::IOpenReadFile, public NSFileLib::IByteReader {
public:
    explicit COpenReadFileGlue(std::unique_ptr<COpenReadFileImpl> impl);

    NSFileLib::IByteReader* GetByteReader() override { return this; }
    int32_t GetSize(int64_t* size) const override;
    int32_t IsValid() const override { return fImpl != nullptr ? 1 : 0; }

    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override;

private:
    std::unique_ptr<COpenReadFileImpl> fImpl;
};

class COpenReadWriteFileGlue final : public NSFileLib::IOpenReadWriteFile,
                                     public NSFileLib::IByteReader,
                                     public NSFileLib::IByteWriter {
public:
    explicit COpenReadWriteFileGlue(std::unique_ptr<COpenReadWriteFileImpl> impl);

    NSFileLib::IByteReader* GetByteReader() override { return this; }
    NSFileLib::IByteWriter* GetByteWriter() override { return this; }
    int32_t IsValid() const override { return fImpl != nullptr ? 1 : 0; }

    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override;
    int32_t Write(int64_t position, int64_t count, const uint8_t* source) override;
    int32_t GetSize(int64_t* size) override;

private:
    std::unique_ptr<COpenReadWriteFileImpl> fImpl;
};

class CSafeOpenReadWriteFileGlue final : public NSFileLib::ISafeOpenReadWriteFile,
                                         public NSFileLib::IByteReader,
                                         public NSFileLib::IByteWriter {
public:
    explicit CSafeOpenReadWriteFileGlue(std::unique_ptr<CSafeOpenReadWriteFileImpl> impl);

    NSFileLib::IByteReader* GetByteReader() override { return this; }
    NSFileLib::IByteWriter* GetByteWriter() override { return this; }
    int32_t Commit() override;
    int32_t IsValid() const override { return fImpl != nullptr ? 1 : 0; }

    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override;
    int32_t Write(int64_t position, int64_t count, const uint8_t* source) override;
    int32_t GetSize(int64_t* size) override;

private:
    std::unique_ptr<CSafeOpenReadWriteFileImpl> fImpl;
};

} // namespace NSFileLibInternals
