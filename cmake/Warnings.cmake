# Flags that every target of the project is built with. Contraction is off so that results are the same to the
# last bit wherever the plain formulas are.
add_library(thudforge_flags INTERFACE)
target_compile_options(thudforge_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -ffp-contract=off)
target_include_directories(thudforge_flags INTERFACE ${CMAKE_SOURCE_DIR})
