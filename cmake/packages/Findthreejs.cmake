# Debian's libjs-three: scripts, which are the same for every system that is built for.
find_path(THREEJS_FOLDER three.min.js PATHS /usr/share/javascript/three NO_CMAKE_FIND_ROOT_PATH)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(threejs REQUIRED_VARS THREEJS_FOLDER)
