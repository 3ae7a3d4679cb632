# How a folder becomes a target.

# What every target of ours is compiled with.
add_library(kso_settings INTERFACE)
add_library(kso::settings ALIAS kso_settings)
target_compile_features(kso_settings INTERFACE cxx_std_20)
target_include_directories(kso_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(kso_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual
    $<$<BOOL:${KSO_WERROR}>:-Werror>
    # No fused multiply-adds: results are the same on every machine.
    -ffp-contract=off
    # The same bytes from every checkout and build folder; the last of these that fits counts.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
    -ffile-prefix-map=${PROJECT_BINARY_DIR}=build
    $<$<AND:$<CONFIG:Release>,$<NOT:$<BOOL:${EMSCRIPTEN}>>>:-g>)
if(EMSCRIPTEN)
    target_compile_options(kso_settings INTERFACE
        -fwasm-exceptions
        "SHELL:-include ${PROJECT_SOURCE_DIR}/web/missing_in_emscripten.h")
    target_link_options(kso_settings INTERFACE -fwasm-exceptions)
endif()

# kso_library(NAME SOURCE...): the library kso_NAME, which others link as kso::NAME. It may include
# headers of its own folder and of the libraries that it links; the test "floors" holds it to that.
function(kso_library name)
    add_library(kso_${name} ${ARGN})
    add_library(kso::${name} ALIAS kso_${name})
    target_link_libraries(kso_${name} PRIVATE kso::settings)
    set_property(GLOBAL APPEND PROPERTY KSO_TARGETS kso_${name})
endfunction()

# kso_program(NAME SOURCE...): the program kso_NAME, whose file is called NAME.
function(kso_program name)
    add_executable(kso_${name} ${ARGN})
    set_target_properties(kso_${name} PROPERTIES OUTPUT_NAME ${name})
    target_link_libraries(kso_${name} PRIVATE kso::settings)
    set_property(GLOBAL APPEND PROPERTY KSO_TARGETS kso_${name})
endfunction()
