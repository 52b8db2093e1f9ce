# cmake -DVALIDATOR=... -DBUNDLE=... -P: fails unless the validator both ends well and says that no
# test failed. Neither is enough alone: it also ends well on a module that holds no plug-in.

# A plug-in has to stand a scan by a host without a display.
unset(ENV{DISPLAY})

execute_process(
    COMMAND "${VALIDATOR}" "${BUNDLE}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
message("${output}${errors}")

if(NOT result EQUAL 0)
    message(FATAL_ERROR "The validator ended with ${result}.")
endif()

if(NOT output MATCHES "Result: ([0-9]+) tests passed, 0 tests failed" OR CMAKE_MATCH_1 EQUAL 0)
    message(FATAL_ERROR "The validator does not say that all of its tests passed.")
endif()
