# The flags of every target of this project, on the interface target LoopFlags, and the choices that
# concern whole builds (sanitizers, coverage), which also reach the test framework.

option(LOOP_WERROR "Treat warnings as errors" OFF)
option(LOOP_COVERAGE "Build with gcov counters" OFF)
set(LOOP_SANITIZE "" CACHE STRING "Sanitizers for the whole build, e.g. address,undefined")
set(LOOP_UNITY OFF CACHE STRING "What is compiled ten files at a time: OFF, TESTS or ALL")
set(LOOP_OPTIMIZE "" CACHE STRING "Compiler flags put behind those of the build type")

set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT EMSCRIPTEN)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
# Asserts stay in: none stands in a hot loop.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g")
set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O2 -g")

# A build says nothing of the folder that it stands in, so that two builds are equal to the byte: the
# debug information starts from the top of the source tree (a debugger started there finds the files).
# The reports of sanitizers and counters, which are debug builds, keep whole paths.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-ffile-prefix-map=${PROJECT_BINARY_DIR}=build
                        -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()

find_program(LOOP_CCACHE ccache)
if(LOOP_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${LOOP_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${LOOP_CCACHE})
endif()

# Ten files at a time take half of the compiler's work. What is built for people is compiled file by
# file, which also shows that each file includes what it uses.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)
if(LOOP_UNITY STREQUAL "ALL")
    set(CMAKE_UNITY_BUILD ON)
endif()

if(LOOP_OPTIMIZE)
    add_compile_options(${LOOP_OPTIMIZE})
endif()
if(LOOP_SANITIZE)
    add_compile_options(-fsanitize=${LOOP_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${LOOP_SANITIZE})
endif()
if(LOOP_LIBFUZZER)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(LOOP_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

string(REGEX MATCH "fast" LOOP_FAST_FLAGS "${CMAKE_CXX_FLAGS}")
add_library(LoopFlags INTERFACE)
target_compile_options(LoopFlags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wdouble-promotion
    -Wformat=2 -Wcast-qual -Wcast-align -Wundef
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>
    $<$<BOOL:${LOOP_WERROR}>:-Werror>
    -fvisibility=hidden
    $<$<COMPILE_LANGUAGE:CXX>:-fvisibility-inlines-hidden>
    # The numbers are the product: no contraction to fused operations, and no rewriting or folding
    # of the math calls, which would give gcc and clang different last bits. Nor does a project around
    # this one, or a person's flags, allow itself liberties with them.
    $<$<OR:$<NOT:$<BOOL:${PROJECT_IS_TOP_LEVEL}>>,$<BOOL:${LOOP_FAST_FLAGS}>>:-fno-fast-math>
    -ffp-contract=off
    -fno-builtin-pow -fno-builtin-powf -fno-builtin-exp -fno-builtin-expf
    -fno-builtin-log -fno-builtin-logf -fno-builtin-sin -fno-builtin-cos -fno-builtin-cosf)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(LoopFlags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
    if(LOOP_UNITY)
        # Fixtures of anonymous namespaces, in files that are included in another one here.
        target_compile_options(LoopFlags INTERFACE
                               $<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
    endif()
endif()
if(WIN32)
    target_compile_definitions(LoopFlags INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX
                               _WIN32_WINNT=0x0601 __USE_MINGW_ANSI_STDIO=1)
    # The platform's stack is aligned to 16 bytes, and gcc may spill 32-byte vectors to it with
    # moves that ask for 32: let the assembler take the moves that do not.
    target_compile_options(LoopFlags INTERFACE -Wa,-muse-unaligned-vector-move)
    # Nothing but system DLLs may be needed where a file of this build runs.
    add_link_options(-static LINKER:--no-insert-timestamp)
endif()
target_include_directories(LoopFlags INTERFACE ${PROJECT_SOURCE_DIR}/Parts)
if(EMSCRIPTEN)
    # Names of C++20 that its library lacks.
    target_include_directories(LoopFlags SYSTEM BEFORE INTERFACE ${CMAKE_CURRENT_LIST_DIR}/emscripten)
    # For programs that Node runs: its files, a memory that grows, and an end that tells the result.
    add_library(LoopNodeProgram INTERFACE)
    target_link_options(LoopNodeProgram INTERFACE -sNODERAWFS=1 -sALLOW_MEMORY_GROWTH=1 -sEXIT_RUNTIME=1
                        -sENVIRONMENT=node -O1)
endif()

# Boost's headers through a folder that holds them alone, so that a cross build sees no other
# header of the building machine.
set(LOOP_BOOST_INCLUDE ${PROJECT_BINARY_DIR}/boost-include)
if(NOT EXISTS ${LOOP_BOOST_INCLUDE}/boost)
    find_path(LOOP_BOOST_ROOT boost/shared_ptr.hpp PATHS /usr/include /usr/local/include
              NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    file(MAKE_DIRECTORY ${LOOP_BOOST_INCLUDE})
    file(CREATE_LINK ${LOOP_BOOST_ROOT}/boost ${LOOP_BOOST_INCLUDE}/boost SYMBOLIC)
endif()
target_include_directories(LoopFlags SYSTEM INTERFACE ${LOOP_BOOST_INCLUDE})
find_package(Threads REQUIRED)
target_link_libraries(LoopFlags INTERFACE Threads::Threads ${CMAKE_DL_LIBS})
