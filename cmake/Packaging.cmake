# `cmake --install` puts the module where hosts look for it below the prefix, `cpack` makes a .deb and a .tar.gz, or a
# .zip of the Windows build.

if(WIN32)
    set(doc_folder doc)
else()
    set(doc_folder share/doc/thudforge)
endif()

install(TARGETS ThudForge LIBRARY DESTINATION lib/vst)
install(TARGETS thudforge RUNTIME DESTINATION bin)
install(FILES README.md LICENSE DESTINATION ${doc_folder})
install(FILES resources/fonts/LICENSE.txt DESTINATION ${doc_folder} RENAME LICENSE-fonts.txt)
install(DIRECTORY docs/ DESTINATION ${doc_folder} FILES_MATCHING PATTERN "*.md")
install(DIRECTORY examples/ DESTINATION ${doc_folder}/examples FILES_MATCHING PATTERN "*.mid")

set(CPACK_PACKAGE_NAME thudforge)
set(CPACK_PACKAGE_VENDOR "The ThudForge authors")
set(CPACK_PACKAGE_CONTACT "The ThudForge authors <thudforge@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${CMAKE_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_SYSTEM_NAME win64)
else()
    set(CPACK_GENERATOR DEB TGZ)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION sound)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "Hard kick and bass synthesizer
 ThudForge is a polyphonic software instrument for hosts that load VST2 modules,
 with a command line program that renders MIDI files through it.")
endif()
include(CPack)
