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

# The same for the editor's bitmaps and fonts.
function(thudforge_embeds_pictures source)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.png ${CMAKE_SOURCE_DIR}/resources/*.ttf)
    list(APPEND files ${CMAKE_SOURCE_DIR}/resources/Bitmaps.inc)
    set_source_files_properties(${CMAKE_SOURCE_DIR}/${source} PROPERTIES OBJECT_DEPENDS "${files}")
endfunction()

# Makes a library from a file of Windows resources: link it to what is to carry them. The warning flags of the project
# mean nothing to the compiler of resources, so they stay away from it.
function(thudforge_resources target source)
    enable_language(RC)
    set_property(SOURCE ${CMAKE_SOURCE_DIR}/${source} APPEND PROPERTY OBJECT_DEPENDS
        "${CMAKE_SOURCE_DIR}/resources/Version.inc;${CMAKE_SOURCE_DIR}/resources/ThudForge.ico")
    add_library(${target}_object OBJECT ${CMAKE_SOURCE_DIR}/${source})
    target_include_directories(${target}_object PRIVATE
        ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/resources/img/grimworks)
    target_compile_definitions(${target}_object PRIVATE
        VERSION_MAJOR=${PROJECT_VERSION_MAJOR} VERSION_MINOR=${PROJECT_VERSION_MINOR}
        VERSION_PATCH=${PROJECT_VERSION_PATCH})
    add_library(${target} INTERFACE)
    target_sources(${target} INTERFACE $<TARGET_OBJECTS:${target}_object>)
endfunction()
