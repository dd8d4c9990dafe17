# Libraries of others: `thudforge_sndfile` (sound files) and `thudforge_cli11` (command line arguments), both for the
# command line host only; the module itself uses none.

add_library(thudforge_sndfile INTERFACE)
add_library(thudforge_cli11 INTERFACE)

# CLI11 is headers only, so that the Windows build takes Debian's as well, through a folder that holds nothing else.
find_path(THUDFORGE_CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include)
file(CREATE_LINK ${THUDFORGE_CLI11_INCLUDE}/CLI ${CMAKE_BINARY_DIR}/include/CLI SYMBOLIC)
target_include_directories(thudforge_cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/include)

if(CMAKE_CROSSCOMPILING)
    if(DEFINED ENV{XDG_CACHE_HOME})
        set(cache $ENV{XDG_CACHE_HOME})
    else()
        set(cache $ENV{HOME}/.cache)
    endif()
    set(THUDFORGE_WINDOWS_LIBRARIES ${cache}/thudforge/windows CACHE PATH
        "Where scripts/windows-libraries.sh puts the libraries that it builds for Windows")
    find_package(SndFile CONFIG PATHS ${THUDFORGE_WINDOWS_LIBRARIES} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    if(NOT SndFile_FOUND)
        message(FATAL_ERROR "There is no libsndfile for Windows in ${THUDFORGE_WINDOWS_LIBRARIES}: "
            "run scripts/windows-libraries.sh, which builds it.")
    endif()
    target_link_libraries(thudforge_sndfile INTERFACE SndFile::sndfile)
else()
    find_path(THUDFORGE_SNDFILE_INCLUDE sndfile.h REQUIRED)
    find_library(THUDFORGE_SNDFILE_LIBRARY sndfile REQUIRED)
    target_include_directories(thudforge_sndfile SYSTEM INTERFACE ${THUDFORGE_SNDFILE_INCLUDE})
    target_link_libraries(thudforge_sndfile INTERFACE ${THUDFORGE_SNDFILE_LIBRARY})
endif()
