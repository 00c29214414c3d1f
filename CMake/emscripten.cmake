# Cross build for WebAssembly by Debian's emscripten.
set(EMSCRIPTEN_SYSTEM_PROCESSOR wasm32)
# The linker's scripts need Debian's node modules, which a Node from elsewhere does not look for.
set(CMAKE_CXX_LINKER_LAUNCHER ${CMAKE_COMMAND} -E env NODE_PATH=/usr/share/nodejs)
# Programs of this emscripten hand their own path to fetch, which later Nodes have.
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-experimental-fetch)
# Another thread would have to hold a mutex.
set(LOOP_EMULATOR_SKIPS_RenderTests CTesselSequencer.LostMutexes*)
# The engine's exceptions: the other kind leaves the module at every call inside a try block, and needs
# the compiler's own JavaScript around it. Browsers have had them since 2021 and 2022, Node since 17.
set(CMAKE_C_FLAGS_INIT "-msimd128 -msse2")
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -msse2 -fwasm-exceptions")
# Asserts stay in: none stands in a hot loop.
set(CMAKE_C_FLAGS_RELEASE "-O2" CACHE STRING "")
set(CMAKE_CXX_FLAGS_RELEASE "-O2" CACHE STRING "")
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
