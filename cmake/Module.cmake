# How the module is linked. It lives in somebody else's process, next to libraries in versions that nobody can know:
# so it brings its C++ runtime along, keeps every symbol but its entry points to itself, and leaves nothing undefined.

if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(THUDFORGE_SANITIZED ON)
else()
    set(THUDFORGE_SANITIZED OFF)
endif()

function(thudforge_module target)
    set_target_properties(${target} PROPERTIES PREFIX "")
    if(WIN32)
        target_link_options(${target} PRIVATE -static -Wl,--exclude-all-symbols)
        return()
    endif()
    # The archives of libpng and FreeType name `stderr` in a way that a module cannot.
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/module-stderr.c)
    # The editor's thread and the caches of bitmaps and fonts live as long as the process.
    target_link_options(${target} PRIVATE -Wl,--wrap=stderr -Wl,-z,nodelete -Wl,-z,text -Wl,--gc-sections)
    set(exports ${CMAKE_SOURCE_DIR}/cmake/module-exports.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports} -Wl,--exclude-libs,ALL -Wl,-Bsymbolic)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
    if(NOT THUDFORGE_SANITIZED)
        # The sanitizers' own runtime stays in the program that loads the module.
        target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc -Wl,-z,defs)
    endif()
endfunction()
