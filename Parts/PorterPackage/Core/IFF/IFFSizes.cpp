#include "PorterPackage/Core/IFF/IFFSizes.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

namespace NSPorter {

namespace {

void CheckMode(int32_t mode) {
    if (mode != kIFFMode_BigEndian && mode != kIFFMode_Native) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdInvalidArgument(""));
    }
}

} // namespace

IFFSizeDecoder GetIFFSizeDecoder(int32_t mode) {
    CheckMode(mode);
    return mode == kIFFMode_Native ? &DecodeNative : &DecodeBigEndian;
}

IFFSizeEncoder GetIFFSizeEncoder(int32_t mode) {
    CheckMode(mode);
    return mode == kIFFMode_Native ? &EncodeNative : &EncodeBigEndian;
}

} // namespace NSPorter
