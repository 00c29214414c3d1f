// The mark of what the audio thread may run.
#pragma once

/// Stands behind the noexcept of a function that the audio thread may run:
///
///     void Render(const CBlockBuffers& buffers, int32_t frameCount) noexcept LOOP_REALTIME;
///
/// Such a function allocates and frees nothing, takes no lock that waits, makes no system call and
/// lets no exception out; so does all that it calls. A compiler that knows the attribute warns
/// (-Wfunction-effects) where the body or a call breaks this; for all others the mark is empty.
#if defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define LOOP_REALTIME [[clang::nonblocking]]
#endif
#endif
#if !defined(LOOP_REALTIME)
#define LOOP_REALTIME
#endif
