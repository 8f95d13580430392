# Makes the module an in-process component of Windows: exports by number, type library, resources.
target_sources(zlmim_component PRIVATE platform_windows.cpp proxy_factory_windows.cpp)
target_link_libraries(zlmim_component PUBLIC oleaut32 ole32 rpcrt4 advapi32)

find_program(ZLMIM_WIDL ${MINGW_W64_PROCESSOR}-w64-mingw32-widl REQUIRED)
# The library that defines `IDispatch`, a part of Wine.
find_path(ZLMIM_STDOLE stdole2.tlb REQUIRED NO_CMAKE_FIND_ROOT_PATH
    PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)

set(type_library ${CMAKE_CURRENT_BINARY_DIR}/ZLMIM.tlb)
math(EXPR bits "8 * ${CMAKE_SIZEOF_VOID_P}")
add_custom_command(
    OUTPUT ${type_library}
    # Keeps the time of the build out of the file.
    COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0
        ${ZLMIM_WIDL} -m${bits} -t -L ${ZLMIM_STDOLE} -o ${type_library} ${CMAKE_CURRENT_SOURCE_DIR}/ZLMIM.idl
    DEPENDS ZLMIM.idl
    VERBATIM)

enable_language(RC)
target_sources(ZLMIMFile PRIVATE ZLMIMFile.rc ZLMIMFile.def ${type_library})
set_source_files_properties(ZLMIMFile.rc PROPERTIES
    OBJECT_DEPENDS ${type_library} INCLUDE_DIRECTORIES ${CMAKE_CURRENT_BINARY_DIR})
set_target_properties(ZLMIMFile PROPERTIES PREFIX "")
target_link_options(ZLMIMFile PRIVATE -static -Wl,--enable-stdcall-fixup)
