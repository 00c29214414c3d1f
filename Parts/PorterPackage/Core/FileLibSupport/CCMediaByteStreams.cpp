#include "PorterPackage/Core/FileLibSupport/CCMediaByteStreams.h"

#include "FileLib/Source/GlueGuard.h"

namespace NSFileLibSupport {

using NSFileLibInternals::CheckCall;
using NSFileLibInternals::RunGuarded;

namespace {

constexpr int32_t kValid = 1;

} // namespace

int32_t CCMediaByteReader::Read(int64_t position, int64_t count, uint8_t* buffer) {
    return RunGuarded(CheckCall(kValid, {buffer}),
                      [&] { fMedia->ReadBytes(position, count, buffer); });
}

int32_t CCMediaByteWriter::Write(int64_t position, int64_t count, const uint8_t* source) {
    return RunGuarded(CheckCall(kValid, {source}),
                      [&] { fMedia->WriteBytes(position, count, source); });
}

int32_t CCMediaByteWriter::GetSize(int64_t* size) {
    return RunGuarded(CheckCall(kValid, {size}), [&] { *size = fMedia->GetLength(); });
}

} // namespace NSFileLibSupport
