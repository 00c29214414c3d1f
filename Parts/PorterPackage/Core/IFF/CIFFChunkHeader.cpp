#include "PorterPackage/Core/IFF/CIFFChunkHeader.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

namespace NSPorter {

namespace {

// The type id behind the size of a group.
constexpr int64_t kTypeSize = 4;

} // namespace

int64_t CIFFChunkHeader::GetHeaderSize() const {
    if (fKind < kIFFKind_Chunk || fKind > kIFFKind_Other) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdException(""));
    }
    return fKind == kIFFKind_Chunk ? 8 : 8 + kTypeSize;
}

int64_t CIFFChunkHeader::GetDataSize() const {
    const int64_t typeSize = GetHeaderSize() - 8;
    CheckFormat(fSize >= typeSize);
    return fSize - typeSize;
}

} // namespace NSPorter
