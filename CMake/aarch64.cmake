# Cross build for 64-bit ARM Linux by Debian's compiler; programs run under the emulator of user programs.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(LOOP_TRIPLE aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/LinuxCross.cmake)
