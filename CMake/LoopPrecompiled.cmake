# Precompiled headers, one set for the library's floors and one for the test programs, each compiled
# once and used by every target of its kind. They save half of the compiler's work where a build is
# made to be tested. What is built for people goes without (LOOP_PCH off for the floors), which also
# shows that each file includes what it uses.
option(LOOP_PCH "Use precompiled headers in the floors of the library" OFF)

set(LOOP_PCH_HEADERS
    <algorithm> <array> <atomic> <cmath> <cstddef> <cstdint> <cstring> <exception> <functional>
    <limits> <memory> <mutex> <optional> <span> <stdexcept> <string> <string_view> <utility> <vector>
    <boost/shared_ptr.hpp>)

# loop_add_precompiled(target kind header...): a target that only holds the compiled headers; its kind,
# OBJECT or EXECUTABLE, is that of the targets that use them, since it sets how addresses are made.
function(loop_add_precompiled target kind)
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/${target}.cpp CONTENT "int main() { return 0; }\n")
    if(kind STREQUAL "OBJECT")
        add_library(${target} OBJECT ${PROJECT_BINARY_DIR}/${target}.cpp)
    else()
        add_executable(${target} ${PROJECT_BINARY_DIR}/${target}.cpp)
    endif()
    target_link_libraries(${target} PRIVATE LoopFlags)
    target_precompile_headers(${target} PRIVATE ${ARGN})
endfunction()
