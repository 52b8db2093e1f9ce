# cv_add_vst3_validator_test(NAME BUNDLE_TARGET HOME): runs the VST 3 SDK's own validator on a
# built bundle. The SDK is no part of JUCE, so its sources come from the first of:
#
#   1. VARLO_VST3SDK_DIR, a folder with a VST 3 SDK that the user names;
#   2. the source cache, filled once by scripts/fetch-source.sh.
#
# Where neither has them the test is there and CTest calls it skipped.

include(ExternalProject)
include(SourceCache)

set(VARLO_VST3SDK_DIR "" CACHE PATH "A folder with the VST 3 SDK, for its validator")

function(cv_add_vst3_validator_test name bundle_target home)
    if(NOT VARLO_VST3SDK_DIR)
        cv_fetch_source(sdk error vst3sdk-3.7.10)
    elseif(EXISTS "${VARLO_VST3SDK_DIR}/public.sdk/samples/vst-hosting/validator/CMakeLists.txt")
        set(sdk "${VARLO_VST3SDK_DIR}")
    else()
        message(FATAL_ERROR "VARLO_VST3SDK_DIR (${VARLO_VST3SDK_DIR}) holds no VST 3 SDK.")
    endif()

    if(error)
        string(STRIP "${error}" error)
        message(STATUS "${name} will be skipped: ${error}")
        add_test(NAME ${name} COMMAND "${CMAKE_COMMAND}" -E echo
            "SKIPPED: no sources of the VST 3 SDK (${error}); VARLO_VST3SDK_DIR can name a folder")
        set_tests_properties(${name} PROPERTIES SKIP_REGULAR_EXPRESSION "SKIPPED: no sources")
        return()
    endif()

    set(build "${CMAKE_CURRENT_BINARY_DIR}/vst3-validator")
    set(validator "${build}/bin/validator${CMAKE_EXECUTABLE_SUFFIX}")

    # A sanitized plug-in loads only into a program that brings the sanitizers' runtime. The SDK's own
    # code is not ours to check, so the flags are the linker's alone.
    if(VARLO_SANITIZERS)
        set(linker_flags "-fsanitize=${VARLO_SANITIZERS}")
    endif()

    ExternalProject_Add(varlo_vst3_validator
        SOURCE_DIR "${PROJECT_SOURCE_DIR}/cmake/vst3-validator"
        BINARY_DIR "${build}"
        INSTALL_COMMAND ""
        BUILD_BYPRODUCTS "${validator}"
        CMAKE_ARGS
            "-DSDK_ROOT=${sdk}"
            -DCMAKE_BUILD_TYPE=Release
            "-DCMAKE_C_COMPILER=${CMAKE_C_COMPILER}"
            "-DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}"
            "-DCMAKE_C_COMPILER_LAUNCHER=${CCACHE_PROGRAM}"
            "-DCMAKE_CXX_COMPILER_LAUNCHER=${CCACHE_PROGRAM}"
            "-DCMAKE_EXE_LINKER_FLAGS=${linker_flags}")

    add_test(NAME ${name} COMMAND "${CMAKE_COMMAND}"
        "-DVALIDATOR=${validator}"
        "-DBUNDLE=$<TARGET_GENEX_EVAL:${bundle_target},$<TARGET_PROPERTY:${bundle_target},JUCE_PLUGIN_ARTEFACT_FILE>>"
        -P "${PROJECT_SOURCE_DIR}/cmake/RunVst3Validator.cmake")
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "HOME=${home}"
        FAIL_REGULAR_EXPRESSION "JUCE Assertion failure"
        TIMEOUT 300)
endfunction()
