#include "PorterPackage/Core/IFFSizes.h"

#include "Failure/Raise.h"
#include "Failure/XClasses.h"
#include "PorterPackage/Core/ByteOrder.h"

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
