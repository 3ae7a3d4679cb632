# Makes the module into the build folder and compares it with the committed one.
execute_process(COMMAND ${MAKE_MUSIC} ${SCORE} ${MADE} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${MADE} ${COMMITTED}
    RESULT_VARIABLE differs)
if(differs)
    message(FATAL_ERROR "data/olvu.xm is not what its score makes; run ./art/make-data")
endif()
