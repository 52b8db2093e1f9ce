# A program holds code of one layer and nothing of another, both told by their namespaces inside cv:
#   cmake -DNM=<nm> -DPROGRAM=<file> -DHOLDS=<layer> -DLACKS=<layer> -P CheckLayersInProgram.cmake

execute_process(COMMAND "${NM}" "${PROGRAM}" OUTPUT_VARIABLE symbols RESULT_VARIABLE result)

if(NOT result EQUAL 0)
    message(FATAL_ERROR "${NM} can't read ${PROGRAM}")
endif()

# As compilers write cv::layer:: into the names of symbols.
foreach(role IN ITEMS HOLDS LACKS)
    string(LENGTH "${${role}}" length)
    string(REGEX MATCH "[^\n]*2cv${length}${${role}}[^\n]*" ${role}_symbol "${symbols}")
endforeach()

if(NOT HOLDS_symbol)
    message(FATAL_ERROR "There is nothing of cv::${HOLDS} in ${PROGRAM}")
endif()

if(LACKS_symbol)
    message(FATAL_ERROR "${PROGRAM} holds code of cv::${LACKS}: ${LACKS_symbol}")
endif()
