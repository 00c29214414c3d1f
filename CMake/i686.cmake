# Cross build for 32-bit x86 Linux by Debian's compiler. Floating-point numbers live in SSE2's registers:
# those of the older unit are wider and would round twice.
set(CMAKE_SYSTEM_PROCESSOR i386) # the emulator's name for it
set(LOOP_TRIPLE i686-linux-gnu)
set(flags "-msse2 -mfpmath=sse -D_FILE_OFFSET_BITS=64 -D_TIME_BITS=64")
set(CMAKE_C_FLAGS_INIT ${flags})
set(CMAKE_CXX_FLAGS_INIT ${flags})
include(${CMAKE_CURRENT_LIST_DIR}/LinuxCross.cmake)

# An x86-64 machine runs these programs itself, by their own loader: the emulator does not know the calls
# of mutexes with priorities in a 32-bit program.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/${LOOP_TRIPLE}/lib/ld-linux.so.2
    --library-path /usr/${LOOP_TRIPLE}/lib)
