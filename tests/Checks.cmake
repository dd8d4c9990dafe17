# Checks of the tree and of what was built from it, each a script that says what is wrong.

set(checks ${CMAKE_CURRENT_SOURCE_DIR}/checks)

# thudforge_check(NAME LABEL COMMAND...)
function(thudforge_check name label)
    add_test(NAME ${name} COMMAND ${ARGN})
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT 300)
endfunction()

# Compares two sound files sample by sample; the renders of two builds must agree.
add_executable(wave_difference ${CMAKE_CURRENT_SOURCE_DIR}/checks/WaveDifference.cpp)
target_link_libraries(wave_difference PRIVATE thudforge_flags thudforge_sndfile)

if(CMAKE_CROSSCOMPILING)
    set(THUDFORGE_LINUX_BUILD ${CMAKE_SOURCE_DIR}/build/release CACHE PATH
        "The Linux build that the Windows build's sound is compared with")
    thudforge_check(windows.Imports checks ${checks}/windows-imports.sh
        $<TARGET_FILE:ThudForge> $<TARGET_FILE:thudforge>)
    thudforge_check(windows.Exports checks ${checks}/windows-exports.sh $<TARGET_FILE:ThudForge>)
    thudforge_check(windows.RendersWhatLinuxRenders checks ${checks}/windows-render.sh
        ${CMAKE_SOURCE_DIR} ${THUDFORGE_LINUX_BUILD}/host/thudforge $<TARGET_FILE:thudforge>
        $<TARGET_FILE:wave_difference> ${CMAKE_CURRENT_BINARY_DIR}/render)
    add_executable(picture_difference ${CMAKE_CURRENT_SOURCE_DIR}/checks/PictureDifference.cpp)
    target_link_libraries(picture_difference PRIVATE thudforge_plugin)
    thudforge_check(windows.EditorLooksAsOnLinux checks ${checks}/windows-editor.sh
        ${CMAKE_SOURCE_DIR} ${THUDFORGE_LINUX_BUILD}/host/thudforge $<TARGET_FILE:thudforge>
        $<TARGET_FILE:picture_difference> ${CMAKE_CURRENT_BINARY_DIR}/pictures)
    thudforge_check(windows.Package checks ${checks}/windows-package.sh ${CMAKE_BINARY_DIR})
    return()
endif()

find_package(Python3 REQUIRED COMPONENTS Interpreter)
thudforge_check(tree.FloorsAndFileSizes checks ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/check-floors.py)
thudforge_check(tree.FloorCheckFindsFaults checks ${Python3_EXECUTABLE} ${checks}/check_floors_test.py)
thudforge_check(tree.TidyFindsFaultsInGroups checks ${Python3_EXECUTABLE} ${checks}/tidy_groups_test.py)
thudforge_check(tree.KickPatternIsWhatItsToolWrites checks ${Python3_EXECUTABLE}
    ${CMAKE_SOURCE_DIR}/tools/make_kick_pattern.py --check ${CMAKE_SOURCE_DIR}/examples/kick-pattern.mid)
thudforge_check(tree.WaveDifferenceFindsFaults checks ${checks}/wave-difference.sh $<TARGET_FILE:wave_difference>)

if(NOT THUDFORGE_SANITIZED)
    thudforge_check(module.KeepsItsSymbols checks ${checks}/module-symbols.sh $<TARGET_FILE:ThudForge>)
    thudforge_check(linux.Package checks ${checks}/linux-package.sh ${CMAKE_BINARY_DIR})
    # What Debian's own hosts say about the module.
    set(scanners ${CMAKE_CURRENT_SOURCE_DIR}/scanners)
    thudforge_check(scanners.Qtractor scanners ${scanners}/qtractor.sh $<TARGET_FILE:ThudForge>)
    thudforge_check(scanners.Ardour scanners ${scanners}/ardour.sh $<TARGET_FILE:ThudForge>)
    thudforge_check(scanners.ArdourSession scanners ${Python3_EXECUTABLE} ${scanners}/ardour-session.py
        $<TARGET_FILE:ThudForge> ${CMAKE_CURRENT_BINARY_DIR}/ardour-session)
    thudforge_check(scanners.ArdourWindow scanners ${Python3_EXECUTABLE} ${scanners}/ardour-window.py
        $<TARGET_FILE:ThudForge> $<TARGET_FILE:thudforge> ${CMAKE_CURRENT_BINARY_DIR}/ardour-window)
    set_tests_properties(scanners.ArdourSession scanners.ArdourWindow PROPERTIES TIMEOUT 120)
endif()
