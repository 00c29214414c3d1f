# What is installed, in components: Runtime (the shared library), Development (what hosts are built
# with), Tools (the programs). Whoever adds a plug-in or a module gives it a component of its own and a
# package in LoopPackage.cmake.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(LOOP_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/LoopLibrary)

install(TARGETS LoopLibrary EXPORT LoopLibraryTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
                NAMELINK_COMPONENT Development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
install(TARGETS LoopLibraryCpp EXPORT LoopLibraryTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
if(TARGET LoopLibraryStatic)
    install(TARGETS LoopLibraryStatic EXPORT LoopLibraryTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endif()
install(EXPORT LoopLibraryTargets NAMESPACE LoopLibrary:: DESTINATION ${LOOP_CMAKE_DIR}
        COMPONENT Development)
configure_package_config_file(
    Packaging/LoopLibraryConfig.cmake.in ${PROJECT_BINARY_DIR}/LoopLibraryConfig.cmake
    INSTALL_DESTINATION ${LOOP_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LoopLibraryConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LoopLibraryConfig.cmake
              ${PROJECT_BINARY_DIR}/LoopLibraryConfigVersion.cmake
        DESTINATION ${LOOP_CMAKE_DIR} COMPONENT Development)

# By way of its own place, so that an installed tree can be moved.
if(TARGET LoopLibraryStatic)
    set(LOOP_PC_PRIVATE "-lstdc++ -lm -lpthread -ldl")
endif()
file(RELATIVE_PATH LOOP_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(Packaging/looplibrary.pc.in ${PROJECT_BINARY_DIR}/looplibrary.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/looplibrary.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

# Examples, with the CMake file that builds them against what is installed.
if(WIN32)
    set(LOOP_EXAMPLES_DIR examples)
else()
    set(LOOP_EXAMPLES_DIR ${CMAKE_INSTALL_DOCDIR}/examples)
endif()
install(DIRECTORY Examples/ DESTINATION ${LOOP_EXAMPLES_DIR} COMPONENT Development)

if(WIN32)
    install(FILES Packaging/LoopLibrary.def DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT Development)
    # Under names that a double click opens.
    install(FILES README.md DESTINATION . RENAME README.txt COMPONENT Runtime)
    install(FILES CHANGELOG.md DESTINATION . RENAME CHANGELOG.txt COMPONENT Runtime)
    set(LOOP_PAGES_DIR Docs)
else()
    install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
            COMPONENT Development)
    set(LOOP_PAGES_DIR ${CMAKE_INSTALL_DOCDIR}/Docs)
endif()
install(DIRECTORY Docs/ DESTINATION ${LOOP_PAGES_DIR} COMPONENT Development
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg")
install(FILES Bindings/JavaScript/README.md DESTINATION ${LOOP_PAGES_DIR}/../Bindings/JavaScript
        COMPONENT Development)

include(LoopPackage)
