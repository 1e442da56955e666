# Installation: headers, libraries, the tool, the CMake package, the pkg-config file, and the Debian
# package that CPack makes of them.
#
# The installed tree can be moved: libraries find each other beside themselves, the tool finds them
# by a path relative to its own, and the package files are relative to where they stand.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/nmktoolbox)
get_property(platform_targets GLOBAL PROPERTY NMK_PLATFORM_TARGETS)
get_property(platform_libraries GLOBAL PROPERTY NMK_PLATFORM_LIBRARIES)

# Libraries, in two export sets because they live in two namespaces.
set(link_platform "")
foreach(target IN LISTS platform_targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
        string(APPEND link_platform " -l${target}")
    endif()
endforeach()
set_target_properties(nmktoolbox PROPERTIES INSTALL_RPATH "$ORIGIN")

# Formulas in public headers give a consumer the bits that the library itself computes.
foreach(target IN LISTS platform_targets ITEMS nmktoolbox)
    target_compile_options(${target} INTERFACE
        $<INSTALL_INTERFACE:$<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang,AppleClang>:-ffp-contract=off>>)
endforeach()
# A consumer's own functions are left by faults as well.
if(NMKTOOLBOX_TRANSLATE_FAULTS)
    target_compile_options(nmktoolbox INTERFACE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fnon-call-exceptions>)
endif()
install(TARGETS ${platform_targets} EXPORT nmkplatform-targets)
install(TARGETS nmktoolbox EXPORT nmktoolbox-targets)

# Headers.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(library IN LISTS platform_libraries)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/platform/${library}/include/
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nmkplatform)
endforeach()

# The tool.
if(NMKTOOLBOX_BUILD_APP)
    file(RELATIVE_PATH from_tool_to_libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(nmk PROPERTIES INSTALL_RPATH "$ORIGIN/${from_tool_to_libraries}")
    install(TARGETS nmk)
    # Debian's shells look in these directories.
    set(documents ${PROJECT_BINARY_DIR}/app/documents)
    install(DIRECTORY ${documents}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            FILES_MATCHING PATTERN "*.1")
    install(FILES ${documents}/nmk.bash
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME nmk)
    install(FILES ${documents}/_nmk DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
    install(FILES ${documents}/nmk.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

# find_package(nmktoolbox CONFIG)
install(EXPORT nmkplatform-targets NAMESPACE nmkplatform:: DESTINATION ${package_folder})
install(EXPORT nmktoolbox-targets NAMESPACE nmktoolbox:: DESTINATION ${package_folder})
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/nmktoolbox-config.cmake.in
    ${PROJECT_BINARY_DIR}/nmktoolbox-config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/nmktoolbox-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nmktoolbox-config.cmake
              ${PROJECT_BINARY_DIR}/nmktoolbox-config-version.cmake
        DESTINATION ${package_folder})

# pkg-config nmktoolbox
file(RELATIVE_PATH from_pkgconfig_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
if(NMKTOOLBOX_TRANSLATE_FAULTS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(pkgconfig_faults " -fnon-call-exceptions")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/nmktoolbox.pc.in
               ${PROJECT_BINARY_DIR}/nmktoolbox.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nmktoolbox.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

# cpack in the build folder makes the Debian package.
if(PROJECT_IS_TOP_LEVEL)
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGE_NAME libnmktoolbox-dev)
    set(CPACK_PACKAGE_CONTACT "the nmktoolbox authors <nmktoolbox@localhost>")
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
    find_program(NMKTOOLBOX_SHLIBDEPS dpkg-shlibdeps)
    if(NMKTOOLBOX_SHLIBDEPS)
        set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
        set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
            ${PROJECT_BINARY_DIR}/source ${PROJECT_BINARY_DIR}/platform)
    else()
        set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libstdc++6, libgcc-s1")
    endif()
    include(CPack)
endif()
