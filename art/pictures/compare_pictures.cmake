# Makes a program's pictures into the build folder and compares them with the committed ones.
file(REMOVE_RECURSE ${MADE})
file(MAKE_DIRECTORY ${MADE})
execute_process(COMMAND ${PROGRAM} ${MADE} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB pictures RELATIVE ${MADE} ${MADE}/*.bmp ${MADE}/*.tga ${MADE}/*.png)
if(NOT pictures)
    message(FATAL_ERROR "${PROGRAM} makes no picture")
endif()
foreach(picture IN LISTS pictures)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E compare_files ${MADE}/${picture} ${COMMITTED}/${picture}
        RESULT_VARIABLE differs)
    if(differs)
        message(FATAL_ERROR "${COMMITTED}/${picture} is not what ${PROGRAM} makes; run ./art/make-data")
    endif()
endforeach()
