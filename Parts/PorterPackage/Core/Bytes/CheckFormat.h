// The one way in which this folder refuses bytes.
#pragma once

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

namespace NSPorter {

/// Raises XFormatViolation with an empty text unless `sound`: what the bytes belong to is known to
/// the caller alone.
inline void CheckFormat(bool sound) {
    if (!sound) {
        NSLichen::Raise(NSLichen::XFormatViolation(""));
    }
}

} // namespace NSPorter
