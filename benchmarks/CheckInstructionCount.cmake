# Counts the instructions that processBlock() takes for a frame, and fails where they are more than LIMIT. Counts, unlike
# times, are the same on a busy machine.
#
#   cmake -DVALGRIND=... -DPROGRAM=... -DSITUATION=... -DLIMIT=... -P CheckInstructionCount.cmake

execute_process(
    COMMAND "${VALGRIND}" --tool=callgrind --callgrind-out-file=/dev/null
        "--toggle-collect=cv::pluginCore::PluginProcessor::processBlock*" "${PROGRAM}" "${SITUATION}"
    OUTPUT_VARIABLE output
    ERROR_VARIABLE report
    RESULT_VARIABLE result)

if(NOT result EQUAL 0 OR NOT output MATCHES "([0-9]+) frames" OR NOT report MATCHES "Collected : ([0-9]+)")
    message(FATAL_ERROR "Nothing was counted:\n${output}${report}")
endif()

string(REGEX MATCH "([0-9]+) frames" frames "${output}")
set(frames "${CMAKE_MATCH_1}")
string(REGEX MATCH "Collected : ([0-9]+)" instructions "${report}")
set(instructions "${CMAKE_MATCH_1}")

math(EXPR tenths "${instructions} * 10 / ${frames}")
math(EXPR whole "${tenths} / 10")
math(EXPR rest "${tenths} % 10")
math(EXPR limit_in_tenths "${LIMIT} * 10")
message("${SITUATION}: ${whole}.${rest} instructions a frame, at most ${LIMIT}")

if(instructions LESS frames)
    message(FATAL_ERROR "So few instructions can't be those of processBlock()")
endif()

if(tenths GREATER limit_in_tenths)
    message(FATAL_ERROR "That is too many")
endif()
