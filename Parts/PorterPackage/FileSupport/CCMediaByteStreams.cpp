#include "PorterPackage/FileSupport/CCMediaByteStreams.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Glue/GlueGuard.h"

namespace NSFileLibSupport {

using NSFileLibInternals::CheckCall;
using NSFileLibInternals::CheckTransfer;
using NSFileLibInternals::RunGuarded;

namespace {

constexpr int32_t kValid = 1;

} // namespace

int32_t CCMediaByteReader::Read(int64_t position, int64_t count, uint8_t* buffer) {
    return RunGuarded(CheckTransfer(kValid, position, count, buffer), [&] {
        // A media in memory does not look at its own end.
        if (count > 0 && count > fMedia->GetLength() - position) {
            NSLichen::Raise(NSLichen::XRead(""));
        }
        fMedia->ReadBytes(position, count, buffer);
    });
}

int32_t CCMediaByteWriter::Write(int64_t position, int64_t count, const uint8_t* source) {
    return RunGuarded(CheckTransfer(kValid, position, count, source),
                      [&] { fMedia->WriteBytes(position, count, source); });
}

int32_t CCMediaByteWriter::GetSize(int64_t* size) {
    return RunGuarded(CheckCall(kValid, {size}), [&] { *size = fMedia->GetLength(); });
}

} // namespace NSFileLibSupport
