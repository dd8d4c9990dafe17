# Collects the sources of whole folders: a new file is part of the build without an entry here.
function(thudforge_sources variable)
    set(found)
    foreach(folder ${ARGN})
        file(GLOB files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.S)
        list(APPEND found ${files})
    endforeach()
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# Makes an assembler file that embeds data depend on the files of these folders, so that a change of one of
# them is seen by the next build.
function(thudforge_embeds source)
    list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
    list(TRANSFORM patterns APPEND /*.raw)
    file(GLOB files CONFIGURE_DEPENDS ${patterns})
    set_source_files_properties(${CMAKE_SOURCE_DIR}/${source} PROPERTIES OBJECT_DEPENDS "${files}")
endfunction()
