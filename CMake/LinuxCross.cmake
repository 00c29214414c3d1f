# What the cross builds for other Linux machines share. A toolchain file sets CMAKE_SYSTEM_PROCESSOR and
# LOOP_TRIPLE, the name that Debian's compiler and its folder of libraries have, and includes this. Programs
# run under qemu's emulator of user programs, which takes the machine's libraries from that folder. What the
# emulator cannot do, and the machine can, stands in lists LOOP_EMULATOR_SKIPS_<test program>; a build on the
# machine itself runs those tests too.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${LOOP_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${LOOP_TRIPLE}-g++)
set(CMAKE_FIND_ROOT_PATH /usr/${LOOP_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Debian's libraries for other machines come without converters of code pages; a program that starts itself
# again starts without the emulator; and the emulator does not keep the list of mutexes that a thread holds
# when it ends. This machine's debugger reads no dump of another.
list(APPEND LOOP_EMULATOR_SKIPS_DebugTests
    CoreDumpTest.ShowsTheCallingFunctionAndWaitingThreads)
list(APPEND LOOP_EMULATOR_SKIPS_TextTests
    CodePage.OtherPagesComeFromTheSystem
    CodePageNames.LeadToTheirConverters)
list(APPEND LOOP_EMULATOR_SKIPS_FileSupportTests
    CodeModule.IsFoundUnderAnyPathAndAfterItsFileIsGone)
list(APPEND LOOP_EMULATOR_SKIPS_SupportTests
    PlatformMutex.PassesOnFromAThreadThatEnded)

find_program(LOOP_QEMU qemu-${CMAKE_SYSTEM_PROCESSOR})
if(LOOP_QEMU)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${LOOP_QEMU} -L /usr/${LOOP_TRIPLE})
endif()
