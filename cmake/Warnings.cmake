# Flags that every target of the project is built with. Contraction is off so that results are the same to the
# last bit wherever the plain formulas are. Nobody reads the floating-point exception flags; saying so changes no
# result and lets g++ work on several samples at once where a loop has a choice in it.
add_library(thudforge_flags INTERFACE)
target_compile_options(thudforge_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -ffp-contract=off -fno-trapping-math)
target_include_directories(thudforge_flags INTERFACE ${CMAKE_SOURCE_DIR})
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 sees overlapping copies in `"text" + std::string()` where there are none.
    target_compile_options(thudforge_flags INTERFACE -Wno-restrict)
endif()
