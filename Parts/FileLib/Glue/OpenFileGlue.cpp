#include "FileLib/Glue/OpenFileGlue.h"

#include "FileLib/Glue/GlueGuard.h"

#include <utility>

namespace NSFileLibInternals {

namespace {

template <class TImpl>
int32_t ReadGuarded(int32_t isValid, TImpl* impl, int64_t position, int64_t count,
                    uint8_t* buffer) {
    return RunGuarded(CheckTransfer(isValid, position, count, buffer),
                      [&] { impl->Read(position, count, buffer); });
}

template <class TImpl>
int32_t WriteGuarded(int32_t isValid, TImpl* impl, int64_t position, int64_t count,
                     const uint8_t* source) {
    return RunGuarded(CheckTransfer(isValid, position, count, source),
                      [&] { impl->Write(position, count, source); });
}

template <class TImpl>
int32_t GetSizeGuarded(int32_t isValid, const TImpl* impl, int64_t* size) {
    return RunGuarded(CheckCall(isValid, {size}), [&] {
        PutUnfinished(size);
        *size = impl->GetSize();
    });
}

} // namespace

COpenReadFileGlue::COpenReadFileGlue(std::unique_ptr<COpenReadFileImpl> impl)
    : fImpl(std::move(impl)) {}

int32_t COpenReadFileGlue::GetSize(int64_t* size) const {
    return GetSizeGuarded(IsValid(), fImpl.get(), size);
}

int32_t COpenReadFileGlue::Read(int64_t position, int64_t count, uint8_t* buffer) {
    return ReadGuarded(IsValid(), fImpl.get(), position, count, buffer);
}

COpenReadWriteFileGlue::COpenReadWriteFileGlue(std::unique_ptr<COpenReadWriteFileImpl> impl)
    : fImpl(std::move(impl)) {}

int32_t COpenReadWriteFileGlue::Read(int64_t position, int64_t count, uint8_t* buffer) {
    return ReadGuarded(IsValid(), fImpl.get(), position, count, buffer);
}

int32_t COpenReadWriteFileGlue::Write(int64_t position, int64_t count, const uint8_t* source) {
    return WriteGuarded(IsValid(), fImpl.get(), position, count, source);
}

int32_t COpenReadWriteFileGlue::GetSize(int64_t* size) {
    return GetSizeGuarded(IsValid(), fImpl.get(), size);
}

CSafeOpenReadWriteFileGlue::CSafeOpenReadWriteFileGlue(
    std::unique_ptr<CSafeOpenReadWriteFileImpl> impl)
    : fImpl(std::move(impl)) {}

int32_t CSafeOpenReadWriteFileGlue::Commit() {
    return RunGuarded(CheckCall(IsValid(), {}), [this] { fImpl->Commit(); });
}

int32_t CSafeOpenReadWriteFileGlue::Read(int64_t position, int64_t count, uint8_t* buffer) {
    return ReadGuarded(IsValid(), fImpl.get(), position, count, buffer);
}

int32_t CSafeOpenReadWriteFileGlue::Write(int64_t position, int64_t count, const uint8_t* source) {
    return WriteGuarded(IsValid(), fImpl.get(), position, count, source);
}

int32_t CSafeOpenReadWriteFileGlue::GetSize(int64_t* size) {
    return GetSizeGuarded(IsValid(), fImpl.get(), size);
}

} // namespace NSFileLibInternals
