# Cross build for 64-bit IBM Z Linux, a big-endian processor, by Debian's compiler.
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(LOOP_TRIPLE s390x-linux-gnu)

# The emulator hands mutexes that lend priorities to this machine's kernel, which reads the owner's number in
# the other order of bytes and knows no such thread: no two threads may meet at one.
set(LOOP_EMULATOR_JOBS 1)
set(LOOP_EMULATOR_SKIPS_HostTests
    CHostTest.APreviewIsControlledWhileItSounds
    CHostTest.TheRateChangesUnderTheTailOfAStoppedPreview
    CHostTest.LoopsComeAndGoBesideEachOther
    CHostTest.OfTwoStartsOneWins
    CHostTest.AStartBesideAStopLeavesNoPreviewThatCannotBeStopped
    CHostTest.AnAudioThreadLendsItsPriorityToTheLoadThatItWaitsFor
    ReloadTest.TwoCopiesHaveAStateEach)
set(LOOP_EMULATOR_SKIPS_DebugTests
    DebuggerTest.AllThreadsAtOnce)
set(LOOP_EMULATOR_SKIPS_HostMeasuredTests
    CHostTest.ABatchTouchesNoHeapWhileOtherThreadsAreBusy)
set(LOOP_EMULATOR_SKIPS_SupportTests
    PlatformMutex.IsWaitedForBeyondTheFirstWait)
include(${CMAKE_CURRENT_LIST_DIR}/LinuxCross.cmake)
