# `cpack -G DEB` makes four packages: libzlmim1 has the shared libraries, libzlmim-dev what programs are built with,
# zlmim-tools the program `zlmim`, and python3-zlmim the package for Python, which doesn't need the others.
# The preset `package` uses the folders of a Debian system. If you distribute packages, set your name by
# `cpack -G DEB -D CPACK_PACKAGE_CONTACT="Name <address>"`.
set(CPACK_PACKAGE_VENDOR "The ZLMIM authors")
set(CPACK_PACKAGE_CONTACT "The ZLMIM authors <authors@zlmim.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "library that reads the 3D assets of the ZLM railway simulator")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev)
if(ZLMIM_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(ZLMIM_BUILD_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(runtime libzlmim${PROJECT_VERSION_MAJOR})
set(description "It loads meshes, animations and asset descriptions, with the meshes,
animations and further assets that they name, into an object model.
.
This package has")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${description} the shared library, and the component for hosts that
load it while they run.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzlmim-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEV_DESCRIPTION "${description} the headers, the static library, and what CMake
and pkg-config need to find them.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME zlmim-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "shows, checks, draws and exports 3D assets of the ZLM railway simulator
The program zlmim shows what meshes, animations and asset descriptions
hold, says what is wrong with them and where, draws them into PNG files,
and writes them as glTF and as pages for browsers.")

# The module is built for one version of Python.
if(ZLMIM_BUILD_PYTHON)
    math(EXPR next "${Python_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${next}~), python3-numpy")
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-zlmim)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/python/postinst ${PROJECT_SOURCE_DIR}/packaging/python/prerm)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "reads 3D assets of the ZLM railway simulator in Python
The module zlmim loads meshes, animations and asset descriptions, with the
meshes, animations and further assets that they name, into an object
model, whose arrays are numpy views.")

# The documentation that a Debian package must contain.
find_program(GZIP gzip)
if(GZIP)
    set(folder ${PROJECT_BINARY_DIR}/packaging)
    string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
    configure_file(packaging/changelog.Debian.in ${folder}/changelog.Debian @ONLY)
    configure_file(CHANGELOG.md ${folder}/changelog COPYONLY)
    execute_process(COMMAND ${GZIP} -9nkf changelog changelog.Debian
        WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
    foreach(component IN ITEMS RUNTIME DEV TOOLS PYTHON)
        string(TOLOWER ${component} lower)
        install(FILES packaging/copyright ${folder}/changelog.gz ${folder}/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}
            COMPONENT ${lower})
    endforeach()
endif()
include(CPack)
