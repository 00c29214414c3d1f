# Cross build for 32-bit ARM Linux with a floating-point unit, by Debian's compiler.
set(CMAKE_SYSTEM_PROCESSOR arm)
set(LOOP_TRIPLE arm-linux-gnueabihf)
set(flags "-D_FILE_OFFSET_BITS=64 -D_TIME_BITS=64")
set(CMAKE_C_FLAGS_INIT ${flags})
set(CMAKE_CXX_FLAGS_INIT ${flags})
include(${CMAKE_CURRENT_LIST_DIR}/LinuxCross.cmake)
