#pragma once

#include "Failure/Chain/CFailureSite.h"

#include <cstdint>

namespace NSFileLib {

// The file library's statuses as failures, and back.

/// Raises what a status of the file library names; nothing for kFileLibStatus_OK.
void ThrowIfFileLibError(int32_t status,
                         const NSLichen::CFailureSite& site = NSLichen::CFailureSite());
/// The same for the status of a reader or writer that a client supplied: any other status than ours
/// travels through the system and comes out unchanged.
void ThrowIfByteStreamError(int32_t status,
                            const NSLichen::CFailureSite& site = NSLichen::CFailureSite());

/// Inside a catch: the status for what was caught. kFileLibStatus_RuntimeError for anything that is
/// no std::exception, and when there is nothing.
int32_t GetCurrentExceptionCode(const NSLichen::CFailureSite& site);

} // namespace NSFileLib
