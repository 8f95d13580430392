# Installs the headers, the shared and the static library, the component, and the files for CMake and pkg-config. Two
# components: `runtime`, and `dev` with the rest.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zlmim)

# Both kinds of the library, from the objects of the one that the project itself uses. On Windows there is only the
# static one, since hosts load the component.
get_target_property(type zlmim TYPE)
if(type STREQUAL SHARED_LIBRARY)
    set(kind shared)
    set(other static)
    add_library(zlmim_static STATIC $<TARGET_OBJECTS:zlmim>)
else()
    set(kind static)
    set(other shared)
    if(NOT WIN32)
        add_library(zlmim_shared SHARED $<TARGET_OBJECTS:zlmim>)
    endif()
endif()
set_target_properties(zlmim PROPERTIES EXPORT_NAME ${kind})
set(libraries zlmim)
if(TARGET zlmim_${other})
    list(APPEND libraries zlmim_${other})
    set_target_properties(zlmim_${other} PROPERTIES
        EXPORT_NAME ${other} OUTPUT_NAME zlmim LINKER_LANGUAGE CXX
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_compile_features(zlmim_${other} INTERFACE cxx_std_20)
    target_include_directories(zlmim_${other} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(zlmim_${other} PRIVATE $<BUILD_INTERFACE:zlmim_build_flags>)
endif()
install(TARGETS ${libraries} EXPORT zlmim
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)

if(ZLMIM_BUILD_COMPONENT)
    install(TARGETS ZLMIMFile
        LIBRARY DESTINATION $<IF:$<BOOL:${WIN32}>,${CMAKE_INSTALL_BINDIR},${CMAKE_INSTALL_LIBDIR}>
        COMPONENT runtime)
    set_target_properties(zlmim_host PROPERTIES EXPORT_NAME host)
    install(TARGETS zlmim_host EXPORT zlmim
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
endif()

install(EXPORT zlmim FILE zlmim-targets.cmake NAMESPACE zlmim:: DESTINATION ${cmake_folder} COMPONENT dev)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zlmim-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/zlmim-config.cmake ${PROJECT_BINARY_DIR}/zlmim-config-version.cmake
    DESTINATION ${cmake_folder} COMPONENT dev)

# Relative to the .pc file, so that an installed tree can be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig
    ${CMAKE_INSTALL_PREFIX}/${pkgconfig_folder} ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/zlmim.pc.in ${PROJECT_BINARY_DIR}/zlmim.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zlmim.pc DESTINATION ${pkgconfig_folder} COMPONENT dev)
