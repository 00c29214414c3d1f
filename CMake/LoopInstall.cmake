# What a host needs: the library, its one header, the pkg-config file and the CMake package.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS LoopLibrary EXPORT LoopLibraryTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS LoopLibraryCpp EXPORT LoopLibraryTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT LoopLibraryTargets NAMESPACE LoopLibrary::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LoopLibrary)
configure_package_config_file(
    Packaging/LoopLibraryConfig.cmake.in ${PROJECT_BINARY_DIR}/LoopLibraryConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LoopLibrary)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LoopLibraryConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LoopLibraryConfig.cmake
              ${PROJECT_BINARY_DIR}/LoopLibraryConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LoopLibrary)

# By way of its own place, so that an installed tree can be moved.
file(RELATIVE_PATH LOOP_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(Packaging/looplibrary.pc.in ${PROJECT_BINARY_DIR}/looplibrary.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/looplibrary.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(WIN32)
    install(FILES Packaging/LoopLibrary.def DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()
