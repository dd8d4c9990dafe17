# Libraries of others: `thudforge_sndfile` (sound files) and `thudforge_cli11` (command line arguments), both for the
# command line host only, and for the module's editor `thudforge_pictures` (PNG and fonts) and
# `thudforge_x11` or `thudforge_win` (windows).

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

if(WIN32)
    # Fonts are drawn by the system; all else of it that the editor needs is part of every Windows.
    add_library(thudforge_pictures INTERFACE)
    find_library(THUDFORGE_PNG_ARCHIVE libpng.a PATHS ${THUDFORGE_WINDOWS_LIBRARIES}/lib
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    find_library(THUDFORGE_Z_ARCHIVE libz.a REQUIRED)
    if(NOT THUDFORGE_PNG_ARCHIVE)
        message(FATAL_ERROR "There is no libpng for Windows in ${THUDFORGE_WINDOWS_LIBRARIES}: "
            "run scripts/windows-libraries.sh, which builds it.")
    endif()
    target_link_libraries(thudforge_pictures INTERFACE ${THUDFORGE_PNG_ARCHIVE} ${THUDFORGE_Z_ARCHIVE})
    target_include_directories(thudforge_pictures SYSTEM INTERFACE ${THUDFORGE_WINDOWS_LIBRARIES}/include)
    add_library(thudforge_win INTERFACE)
    target_link_libraries(thudforge_win INTERFACE comctl32 comdlg32 gdi32 shell32 wininet)
else()
    # Hosts bring libpng and FreeType in versions of their own, and symbols of theirs would be taken for the module's:
    # so it holds both whole, and hides them. Debian's archives are made for programs, but all that keeps them out of
    # a module is their use of `stderr`, which module-stderr.c gives them. The X11 libraries are those of the system,
    # shared with the host, since their versions follow the display server.
    add_library(thudforge_pictures INTERFACE)
    find_path(THUDFORGE_PNG_INCLUDE png.h REQUIRED)
    find_path(THUDFORGE_FREETYPE_INCLUDE ft2build.h PATH_SUFFIXES freetype2 REQUIRED)
    target_include_directories(thudforge_pictures SYSTEM INTERFACE
        ${THUDFORGE_PNG_INCLUDE} ${THUDFORGE_FREETYPE_INCLUDE})
    foreach(library freetype png16 z brotlidec brotlicommon)
        string(TOUPPER THUDFORGE_${library}_ARCHIVE archive)
        find_library(${archive} lib${library}.a REQUIRED)
        target_link_libraries(thudforge_pictures INTERFACE ${${archive}})
    endforeach()

    find_package(Threads REQUIRED)
    find_path(THUDFORGE_XCB_INCLUDE xcb/shm.h REQUIRED)
    find_library(THUDFORGE_XCB_SHM_LIBRARY xcb-shm REQUIRED)
    find_library(THUDFORGE_XCB_LIBRARY xcb REQUIRED)
    add_library(thudforge_x11 INTERFACE)
    target_include_directories(thudforge_x11 SYSTEM INTERFACE ${THUDFORGE_XCB_INCLUDE})
    target_link_libraries(thudforge_x11 INTERFACE
        ${THUDFORGE_XCB_SHM_LIBRARY} ${THUDFORGE_XCB_LIBRARY} Threads::Threads)
endif()
