# Debian 12's rapidjson-dev defines no target.
find_path(RAPIDJSON_INCLUDE_DIR rapidjson/prettywriter.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(RapidJSON REQUIRED_VARS RAPIDJSON_INCLUDE_DIR)
if(RapidJSON_FOUND AND NOT TARGET rapidjson)
    add_library(rapidjson INTERFACE IMPORTED GLOBAL)
    target_include_directories(rapidjson INTERFACE ${RAPIDJSON_INCLUDE_DIR})
endif()
