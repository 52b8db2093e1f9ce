# varlo_add_vst3_validator_test(NAME BUNDLE_TARGET HOME): runs the VST 3 SDK's own validator on a
# built bundle. The SDK is no part of JUCE, so its sources come from the first of:
#
#   1. VARLO_VST3SDK_DIR, a folder with a VST 3 SDK that the user names;
#   2. the source cache, filled once from Debian's source package.
#
# Where neither has them the test is there and CTest calls it skipped.

include(ExternalProject)
include(SourceCache)

set(VARLO_VST3SDK_DIR "" CACHE PATH "A folder with the VST 3 SDK, for its validator")

# Leaves those parts of the SDK in `folder` that the validator is made of. Sets `error` to the reason
# when it can't.
function(varlo_fetch_vst3sdk folder error)
    set(version 3.7.10.14+~4.13.3)
    set(parts base cmake pluginterfaces public-sdk)
    set(shas
        b9eb5c1e57ca2ef6b2560dd0e13822dd5a51e437b8f5a6c421b099d621d2bffb
        f4699e910a67e585d7d177b2a48f6aa43706b3f073c8e454615f094484374349
        fd426c6b26ef93fdfdc8aef7e9b836c1bf43f25b8a1ef4c0642a41fb9250ab8a
        ca1f70406b36f0763c799085c67deed5befc69514cc2b9cacb804512e95db335)

    foreach(part sha IN ZIP_LISTS parts shas)
        list(APPEND pins "${sha}:vst3sdk_${version}.orig-${part}.tar.gz")
    endforeach()

    set(download "${folder}.download")
    file(REMOVE_RECURSE "${download}")
    message(STATUS "Fetching the VST 3 SDK: Debian's source package ${version}-4")
    varlo_fetch_debian_source(vst3sdk "${version}-4" "${download}" message ${pins})

    if(NOT message)
        foreach(part IN LISTS parts)
            file(ARCHIVE_EXTRACT
                INPUT "${download}/vst3sdk_${version}.orig-${part}.tar.gz"
                DESTINATION "${download}/${part}")
            string(REPLACE "-" "." name "${part}")
            file(RENAME "${download}/${part}/vst3sdk-${version}" "${download}/sdk-${name}")
            file(MAKE_DIRECTORY "${download}/sdk")
            file(RENAME "${download}/sdk-${name}" "${download}/sdk/${name}")
        endforeach()

        file(RENAME "${download}/sdk" "${folder}")
    endif()

    file(REMOVE_RECURSE "${download}")
    set(${error} "${message}" PARENT_SCOPE)
endfunction()

# Sets `result` to a folder with the SDK, or to nothing and `error` to the reason.
function(varlo_find_vst3sdk result error)
    set(validator public.sdk/samples/vst-hosting/validator/CMakeLists.txt)

    if(VARLO_VST3SDK_DIR)
        if(NOT EXISTS "${VARLO_VST3SDK_DIR}/${validator}")
            message(FATAL_ERROR "VARLO_VST3SDK_DIR (${VARLO_VST3SDK_DIR}) holds no VST 3 SDK.")
        endif()

        set(${result} "${VARLO_VST3SDK_DIR}" PARENT_SCOPE)
        return()
    endif()

    set(folder "${VARLO_SOURCE_CACHE}/vst3sdk-3.7.10")

    if(NOT EXISTS "${folder}/${validator}")
        varlo_lock_source_cache()

        if(NOT EXISTS "${folder}/${validator}")
            varlo_fetch_vst3sdk("${folder}" message)
        endif()

        varlo_unlock_source_cache()
    endif()

    if(message)
        set(folder "")
    endif()

    set(${result} "${folder}" PARENT_SCOPE)
    set(${error} "${message}" PARENT_SCOPE)
endfunction()

function(varlo_add_vst3_validator_test name bundle_target home)
    varlo_find_vst3sdk(sdk error)

    if(NOT sdk)
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
            "-DCMAKE_C_COMPILER_LAUNCHER=${CMAKE_C_COMPILER_LAUNCHER}"
            "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
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
