# Collects the sources of whole folders: a new file is part of the build without an entry here.
function(thudforge_sources variable)
    set(found)
    foreach(folder ${ARGN})
        file(GLOB files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.S)
        list(APPEND found ${files})
    endforeach()
    set(${variable} ${found} PARENT_SCOPE)
endfunction()
