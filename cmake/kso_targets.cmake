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

# kso_finds_its_places(TARGET PROGRAM LIBRARY): findPlaces (packaging/places.h) for a target, which is
# or becomes a part of PROGRAM: the ways from that to the show, to LIBRARY and to the data.
function(kso_finds_its_places target program library)
    file(RELATIVE_PATH bin_to_libexec
        ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBEXECDIR}/kso)
    file(RELATIVE_PATH bin_to_data ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/kso)
    set(built $<TARGET_FILE_DIR:${program}>)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/packaging/places.cpp)
    target_compile_definitions(${target} PRIVATE
        KSO_INSTALLED_PROGRAM="${bin_to_libexec}/kso"
        KSO_INSTALLED_LIBRARY="${bin_to_libexec}/$<TARGET_FILE_NAME:${library}>"
        KSO_INSTALLED_FOLDER="${bin_to_data}"
        KSO_BUILT_PROGRAM="$<PATH:RELATIVE_PATH,$<TARGET_FILE:kso>,${built}>"
        KSO_BUILT_LIBRARY="$<PATH:RELATIVE_PATH,$<TARGET_FILE:${library}>,${built}>"
        KSO_SOURCE_FOLDER="$<PATH:RELATIVE_PATH,${PROJECT_SOURCE_DIR},${built}>")
endfunction()
