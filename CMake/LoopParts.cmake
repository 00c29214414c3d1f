# loop_sources(OUT dir...): the sources of folders (not of what lies below them). A file that ends
# in _win32.cpp or _posix.cpp belongs to that platform alone.
function(loop_sources out)
    set(found)
    foreach(dir IN LISTS ARGN)
        file(GLOB here CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.c)
        if(WIN32)
            list(FILTER here EXCLUDE REGEX "_posix\\.cpp$")
        else()
            list(FILTER here EXCLUDE REGEX "_win32\\.cpp$")
        endif()
        list(APPEND found ${here})
    endforeach()
    set(${out} ${found} PARENT_SCOPE)
endfunction()

# loop_add_part(Name room...): one floor of the library as an object library LoopName, so that tests
# reach its insides while the shared library exports only its public functions. Each room is a folder
# whose CMakeLists.txt lists its sources by loop_room.
function(loop_add_part name)
    add_library(Loop${name} OBJECT)
    target_link_libraries(Loop${name} PUBLIC LoopFlags)
    if(LOOP_PCH)
        target_precompile_headers(Loop${name} REUSE_FROM LoopPrecompiled)
    endif()
    foreach(room IN LISTS ARGN)
        add_subdirectory(${room})
    endforeach()
endfunction()

# loop_room(Floor SOURCES file... [POSIX file...] [WIN32 file...] [X86_64 file...] [AARCH64 file...]
#           [WASM file...] [PORTABLE file...] [ELSEWHERE file...]): the sources of this folder, all
# systems' and each system's own, each processor's and those for a processor without a list, and those of
# builds with other libraries. A source that stands in the folder and in no list is an error, so that none
# is forgotten.
function(loop_room floor)
    cmake_parse_arguments(arg "" "" "${LOOP_SOURCE_LISTS}" ${ARGN})
    loop_own_sources(own arg)
    file(GLOB here CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp *.c)
    list(REMOVE_ITEM here ${own_listed} "")
    if(here)
        message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/CMakeLists.txt does not list: ${here}")
    endif()
    list(TRANSFORM own PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(Loop${floor} PRIVATE ${own})
    # These repeat each other's names in other vectors.
    list(FILTER own INCLUDE REGEX "(Sse2|Avx2|Neon|Simd128|Lanes)\\.cpp$")
    if(own)
        set_source_files_properties(${own} TARGET_DIRECTORY Loop${floor}
                                    PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
endfunction()

# loop_add_test(Name IN folder SOURCES file... [POSIX file...] ... PARTS part... [LIBS target...]):
# a test program of a folder, run as one test, under the emulator in a cross build. The lists are those of
# loop_room. The files stand in the folder; a source in one of their folders that stands in no list is an
# error.
function(loop_add_test name)
    cmake_parse_arguments(arg "" "IN" "${LOOP_SOURCE_LISTS};PARTS;LIBS" ${ARGN})
    loop_own_sources(own arg)
    set(folder ${CMAKE_CURRENT_SOURCE_DIR}/${arg_IN})
    loop_check_listed(${folder} "${own_listed}")
    if((LOOP_SANITIZE MATCHES "thread" AND NOT name IN_LIST threaded) OR
       (EMSCRIPTEN AND NOT name IN_LIST wasm))
        return()
    endif()
    list(TRANSFORM own PREPEND ${folder}/)
    list(TRANSFORM arg_PARTS PREPEND Loop)
    add_executable(${name} ${own})
    target_compile_options(${name} PRIVATE ${LOOP_TEST_OPTIONS})
    target_precompile_headers(${name} REUSE_FROM LoopTestPrecompiled)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE LoopFlags ${arg_PARTS} ${arg_LIBS} GTest::gtest_main)
    if(EMSCRIPTEN)
        target_link_libraries(${name} PRIVATE LoopNodeProgram)
    endif()
    if(LOOP_EMULATOR_SKIPS_${name})
        list(JOIN LOOP_EMULATOR_SKIPS_${name} ":" skipped)
        set(filter --gtest_filter=-${skipped})
    endif()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 ${filter})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()

# An error if a folder of the listed files holds a source that is not among them.
function(loop_check_listed root listed)
    set(folders)
    foreach(file IN LISTS listed)
        get_filename_component(folder ${root}/${file} DIRECTORY)
        list(APPEND folders ${folder})
    endforeach()
    list(REMOVE_DUPLICATES folders)
    foreach(folder IN LISTS folders)
        file(GLOB here CONFIGURE_DEPENDS RELATIVE ${root} ${folder}/*.cpp ${folder}/*.c)
        list(REMOVE_ITEM here ${listed})
        if(here)
            message(FATAL_ERROR "${CMAKE_CURRENT_LIST_FILE} does not list: ${here}")
        endif()
    endforeach()
endfunction()
