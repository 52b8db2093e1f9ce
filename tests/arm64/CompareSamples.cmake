# Has PROGRAM hold the samples that OTHER_PROGRAM writes, or it itself, against its own.

if(NOT OTHER_PROGRAM)
    set(OTHER_PROGRAM "${PROGRAM}")
endif()

foreach(command IN ITEMS "${OTHER_PROGRAM};${SAMPLES}" "${PROGRAM};--compare;${SAMPLES}")
    execute_process(COMMAND ${command} RESULT_VARIABLE result)

    if(NOT result EQUAL 0)
        file(REMOVE "${SAMPLES}")
        list(JOIN command " " command)
        message(FATAL_ERROR "${command} ended with ${result}")
    endif()
endforeach()

file(REMOVE "${SAMPLES}")
