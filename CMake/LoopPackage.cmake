# Packages out of the components: .deb files on Linux, one zip on Windows. scripts/package runs it.
option(LOOP_DEBIAN "Install what Debian packages hold besides: changelogs, copyright notes" OFF)

set(CPACK_PACKAGE_NAME LoopLibrary)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Halyard Software")
set(CPACK_PACKAGE_CONTACT "Halyard Software <maintainers@halyard.example>")
set(CPACK_STRIP_FILES ON)
set(CPACK_ARCHIVE_THREADS 1)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME LoopLibrary-${PROJECT_VERSION}-windows-x86_64)
    include(CPack)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# loop_debian_package(COMPONENT package SECTION section DESCRIPTION text [DEPENDS text]): the first line of
# the description is the short one.
function(loop_debian_package component package)
    cmake_parse_arguments(arg "" "SECTION;DESCRIPTION;DEPENDS" "" ${ARGN})
    string(TOUPPER ${component} upper)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
    set(prefix CPACK_DEBIAN_${upper}_PACKAGE)
    set(${prefix}_NAME ${package} PARENT_SCOPE)
    set(${prefix}_SECTION ${arg_SECTION} PARENT_SCOPE)
    set(${prefix}_DEPENDS "${arg_DEPENDS}" PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${arg_DESCRIPTION}" PARENT_SCOPE)
    if(LOOP_DEBIAN)
        install(FILES ${LOOP_DEBIAN_DIR}/changelog.gz ${PROJECT_SOURCE_DIR}/Packaging/copyright
                DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
    endif()
endfunction()

if(LOOP_DEBIAN)
    set(LOOP_DEBIAN_DIR ${PROJECT_BINARY_DIR}/debian)
    string(TIMESTAMP LOOP_DEBIAN_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
    configure_file(Packaging/changelog.in ${LOOP_DEBIAN_DIR}/changelog @ONLY)
    execute_process(COMMAND gzip --best --no-name --force --keep ${LOOP_DEBIAN_DIR}/changelog
                    COMMAND_ERROR_IS_FATAL ANY)
    # What Debian asks of files that other systems take as they are. Files lie below DESTDIR or the
    # prefix, whichever cpack uses.
    install(CODE "
        set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
        file(GLOB pages \"\${root}/${CMAKE_INSTALL_MANDIR}/man1/*.1\")
        foreach(page IN LISTS pages)
            execute_process(COMMAND gzip --best --no-name --force \"\${page}\")
        endforeach()" COMPONENT Tools)
    install(CODE "
        set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
        file(GLOB archives \"\${root}/${CMAKE_INSTALL_LIBDIR}/*.a\")
        foreach(archive IN LISTS archives)
            execute_process(COMMAND ${CMAKE_STRIP} --strip-debug --enable-deterministic-archives
                            \"\${archive}\")
        endforeach()" COMPONENT Development)
endif()

loop_debian_package(Runtime liblooplibrary${PROJECT_VERSION_MAJOR}
    SECTION libs
    DESCRIPTION "sliced audio loops for hosts, shared library
It loads sliced audio loops of three kinds of
file from memory, decodes their losslessly packed audio, tells tempo, length
and slices, renders any slice at any output rate, and plays the whole loop at
the host's tempo.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/Packaging/symbols
    ${PROJECT_SOURCE_DIR}/Packaging/shlibs ${PROJECT_SOURCE_DIR}/Packaging/triggers)
set(own "liblooplibrary${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
loop_debian_package(Development liblooplibrary-dev
    SECTION libdevel
    DESCRIPTION "sliced audio loops for hosts, development files
This is what hosts are built with: headers for C and C++, the static library,
a CMake package, a pkg-config file and examples."
    DEPENDS "${own}")
if(LOOP_TOOLS)
    loop_debian_package(Tools looptool
        SECTION sound
        DESCRIPTION "makes, shows, renders and decodes sliced audio loops
This is a command-line program that makes loop files from audio, shows what
is in them, renders their slices and previews at any tempo, and decodes their
audio.")
endif()
if(TARGET LoopPlayerLV2)
    loop_debian_package(Plugin loop-player-lv2
        SECTION sound
        DESCRIPTION "LV2 instrument that plays sliced audio loops
This is an LV2 instrument that plays sliced audio loops by the host's transport
and tempo, and their slices by MIDI.")
    set(CPACK_DEBIAN_PLUGIN_PACKAGE_PROVIDES lv2-plugin)
endif()
if(LOOP_DEBIAN)
    # Elsewhere pip installs it.
    install(DIRECTORY Bindings/Python/looplibrary DESTINATION lib/python3/dist-packages
            COMPONENT Python PATTERN "__pycache__" EXCLUDE)
    loop_debian_package(Python python3-looplibrary
        SECTION python
        DESCRIPTION "sliced audio loops for hosts, Python module
This is a Python module on ctypes that opens, inspects, renders and previews
sliced audio loops, with numpy arrays where numpy is installed."
        DEPENDS "python3, ${own}")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-numpy)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/Packaging/python3/postinst
        ${PROJECT_SOURCE_DIR}/Packaging/python3/prerm)
endif()
include(CPack)
