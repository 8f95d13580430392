# Debian's libstb-dev has no CMake package.
find_path(STB_INCLUDE_DIR stb/stb_image.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(stb REQUIRED_VARS STB_INCLUDE_DIR)
if(stb_FOUND AND NOT TARGET stb)
    add_library(stb INTERFACE IMPORTED GLOBAL)
    target_include_directories(stb INTERFACE ${STB_INCLUDE_DIR})
endif()
