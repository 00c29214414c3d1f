#pragma once

#include "PorterPackage/Core/Bytes/CABCFormat.h"

namespace NSLOPDLL {

/// Base of the chunk classes of a LOP2 file. Each reads and validates its chunk in its constructor,
/// so that an object that exists is valid, and only hands out its fields afterwards. The media of a
/// constructor stands at the first byte of the chunk and ends with it; bytes behind the last field
/// are ignored. Every constructor raises XRead when the chunk is too short for its fields, and
/// XFormatViolation, with the target word of loop files, for a value out of its range. A version or
/// text that is damaged or cut off raises XFormatViolation without a target word; a text in a form
/// of the future raises XUnsupportedFormat.
class CABCLOP2Chunk : public NSPorter::CABCFormat {
public:
    void FinishReading() final {}

protected:
    CABCLOP2Chunk() = default;
};

} // namespace NSLOPDLL
