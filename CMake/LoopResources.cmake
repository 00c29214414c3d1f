# loop_add_resources(target dir): builds the resources of a folder into whatever links the target.
# Each sub-folder of dir bears the name of a kind and holds the kind's resources; the strings of
# VersionInfo.txt.in describe the module. On Windows they become real resources with a VERSIONINFO
# block, elsewhere a table in the module's constant data.
function(loop_add_resources target dir)
    if(LOOP_SANITIZE OR LOOP_COVERAGE)
        set(LOOP_BUILD_KIND Testing)
    elseif(CMAKE_BUILD_TYPE STREQUAL "Debug")
        set(LOOP_BUILD_KIND Debugging)
    else()
        set(LOOP_BUILD_KIND Deployment)
    endif()
    set(out ${PROJECT_BINARY_DIR}/resources)
    set(version ${out}/version.txt)
    configure_file(${dir}/VersionInfo.txt.in ${version} @ONLY)
    file(GLOB files CONFIGURE_DEPENDS ${dir}/*/*)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})

    if(WIN32)
        loop_write_rc(${out}/Resources.rc ${version} "${files}")
        # Apart from the target, whose compile flags the resource compiler does not know.
        enable_language(RC)
        add_library(${target}Resources OBJECT ${out}/Resources.rc)
        set_source_files_properties(${out}/Resources.rc PROPERTIES OBJECT_DEPENDS "${files}")
        target_sources(${target} INTERFACE $<TARGET_OBJECTS:${target}Resources>)
        target_link_libraries(${target} PUBLIC version)
    else()
        loop_write_table(${out}/EmbeddedResources.cpp ${version} "${files}")
        target_sources(${target} PRIVATE ${out}/EmbeddedResources.cpp)
    endif()
endfunction()

# Writes a file only when that changes it, so that a new configuration alone compiles nothing.
function(loop_write_if_different path text)
    file(CONFIGURE OUTPUT ${path} CONTENT "${text}" @ONLY)
endfunction()

function(loop_write_rc path version files)
    string(REPLACE "." "," numbers ${PROJECT_VERSION},0)
    set(text "#include <winver.h>\n\n1 VERSIONINFO\nFILEVERSION ${numbers}\n")
    string(APPEND text "PRODUCTVERSION ${numbers}\nFILEFLAGSMASK VS_FFI_FILEFLAGSMASK\n"
           "FILEFLAGS VS_FF_SPECIALBUILD\nFILEOS VOS_NT_WINDOWS32\nFILETYPE VFT_DLL\n"
           "BEGIN\n  BLOCK \"StringFileInfo\"\n  BEGIN\n    BLOCK \"040904b0\"\n    BEGIN\n")
    file(STRINGS "${version}" lines REGEX "=")
    foreach(line IN LISTS lines)
        string(REGEX REPLACE " *= *" "\", \"" value ${line})
        string(APPEND text "      VALUE \"${value}\"\n")
    endforeach()
    string(APPEND text "    END\n  END\n  BLOCK \"VarFileInfo\"\n  BEGIN\n"
           "    VALUE \"Translation\", 0x409, 1200\n  END\nEND\n\n")
    foreach(file IN LISTS files)
        loop_resource_name(${file} kind name)
        string(TOUPPER ${name} name)
        string(APPEND text "${name} ${kind} \"${file}\"\n")
    endforeach()
    loop_write_if_different(${path} "${text}")
endfunction()

function(loop_write_table path version files)
    set(arrays)
    set(rows)
    set(index 0)
    foreach(file IN ITEMS ${version} ${files})
        if(file STREQUAL version)
            set(kind VERSION)
            set(name version.txt)
        else()
            loop_resource_name(${file} kind name)
        endif()
        file(READ ${file} bytes HEX)
        string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
        string(APPEND arrays "constexpr uint8_t kData${index}[] = {${bytes}};\n")
        string(APPEND rows "    {\"${kind}\", \"${name}\", kData${index}, sizeof kData${index}},\n")
        math(EXPR index "${index} + 1")
    endforeach()
    loop_write_if_different(${path} "// Generated from the resources; see CMake/LoopResources.cmake.
#include \"Support/Modules/EmbeddedResources.h\"

namespace NSSupport {

namespace {

${arrays}
constexpr SEmbeddedResource kResources[] = {
${rows}};

} // namespace

std::span<const SEmbeddedResource> GetEmbeddedResources() { return kResources; }

} // namespace NSSupport
")
endfunction()

function(loop_resource_name file out_kind out_name)
    get_filename_component(folder ${file} DIRECTORY)
    get_filename_component(kind ${folder} NAME)
    get_filename_component(name ${file} NAME)
    set(${out_kind} ${kind} PARENT_SCOPE)
    set(${out_name} ${name} PARENT_SCOPE)
endfunction()
