# Defines `zlmim::shared` and `zlmim::static`, if they are installed. `zlmim::zlmim` is the requested component
# (`find_package(zlmim COMPONENTS static)`); otherwise the shared one if there is one. `zlmim::host` is for hosts of the
# component, which don't link it.
include(${CMAKE_CURRENT_LIST_DIR}/zlmim-targets.cmake)

foreach(kind IN LISTS zlmim_FIND_COMPONENTS ITEMS shared static)
    if(TARGET zlmim::${kind})
        set(zlmim_${kind}_FOUND TRUE)
        if(NOT TARGET zlmim::zlmim AND kind MATCHES "^(shared|static)$")
            add_library(zlmim::zlmim ALIAS zlmim::${kind})
        endif()
    elseif(zlmim_FIND_REQUIRED_${kind})
        set(zlmim_FOUND FALSE)
        set(zlmim_NOT_FOUND_MESSAGE "zlmim has no component '${kind}' here")
    endif()
endforeach()
