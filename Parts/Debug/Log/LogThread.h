// The one thread of the process that writes the lines of all others, if a thread has claimed that.
#pragma once

#include <cstdint>

namespace NSDebugPackage {

/// The calling thread becomes the log thread, or nobody is it any more. Real-time safe, like the
/// question.
void SetLogThread() noexcept;
void ClearLogThread() noexcept;

/// True on the log thread, and on every thread while there is none.
bool IsLogThread() noexcept;

} // namespace NSDebugPackage
