# Sources of others are fetched once, into a cache outside the build folder.

if(DEFINED ENV{XDG_CACHE_HOME})
    set(varlo_cache_default "$ENV{XDG_CACHE_HOME}/varlo")
elseif(DEFINED ENV{HOME})
    set(varlo_cache_default "$ENV{HOME}/.cache/varlo")
else()
    set(varlo_cache_default "${CMAKE_BINARY_DIR}/sources")
endif()

set(VARLO_SOURCE_CACHE "${varlo_cache_default}" CACHE PATH "Where fetched sources are kept")

# Two build folders may configure at the same time.
macro(varlo_lock_source_cache)
    file(MAKE_DIRECTORY "${VARLO_SOURCE_CACHE}")
    file(LOCK "${VARLO_SOURCE_CACHE}/lock" TIMEOUT 600)
endmacro()

macro(varlo_unlock_source_cache)
    file(LOCK "${VARLO_SOURCE_CACHE}/lock" RELEASE)
endmacro()

# Downloads the named files of a Debian 13 source package into `folder`; ARGN are SHA256:FILE pairs.
# Sets `error` to the reason when it can't, to nothing when all files are there.
function(varlo_fetch_debian_source package version folder error)
    find_program(BASH_PROGRAM bash)

    if(NOT BASH_PROGRAM)
        set(${error} "bash is not installed" PARENT_SCOPE)
        return()
    endif()

    execute_process(
        COMMAND "${BASH_PROGRAM}" "${PROJECT_SOURCE_DIR}/scripts/fetch-debian-source.sh"
                trixie ${package} ${version} "${folder}" ${ARGN}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)

    if(result EQUAL 0)
        set(${error} "" PARENT_SCOPE)
        return()
    endif()

    # apt's own warnings come first; the script's last line says what is wrong.
    string(STRIP "${output}" output)
    string(REGEX REPLACE ".*\n" "" output "${output}")
    set(${error} "${output}" PARENT_SCOPE)
endfunction()
