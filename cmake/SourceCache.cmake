# What others wrote is fetched once, into a cache outside the build folder: a fresh clone or a second build folder need
# not fetch again.

if(DEFINED ENV{XDG_CACHE_HOME})
    set(cv_cache_default "$ENV{XDG_CACHE_HOME}/varlo")
elseif(DEFINED ENV{HOME})
    set(cv_cache_default "$ENV{HOME}/.cache/varlo")
else()
    set(cv_cache_default "${CMAKE_BINARY_DIR}/sources")
endif()

set(VARLO_SOURCE_CACHE "${cv_cache_default}" CACHE PATH "Where fetched sources are kept")

# cv_fetch_source(FOLDER ERROR SOURCE): sets FOLDER to where SOURCE is, one of those that scripts/fetch-source.sh
# knows, and ERROR to nothing; else ERROR to what was tried in vain, a line each.
function(cv_fetch_source folder error source)
    set(path "${VARLO_SOURCE_CACHE}/${source}")
    set(tried "")

    if(NOT EXISTS "${path}")
        find_program(BASH_PROGRAM bash)
        message(STATUS "Fetching ${source}")

        # Two build folders may configure at the same time.
        file(MAKE_DIRECTORY "${VARLO_SOURCE_CACHE}")
        file(LOCK "${VARLO_SOURCE_CACHE}/lock" TIMEOUT 600)

        if(NOT BASH_PROGRAM)
            set(tried "  - scripts/fetch-source.sh: bash is not installed\n")
        elseif(NOT EXISTS "${path}")
            execute_process(
                COMMAND "${BASH_PROGRAM}" "${PROJECT_SOURCE_DIR}/scripts/fetch-source.sh" ${source} "${path}"
                RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)

            if(NOT result EQUAL 0)
                set(tried "${output}")
            endif()
        endif()

        file(LOCK "${VARLO_SOURCE_CACHE}/lock" RELEASE)
    endif()

    set(${folder} "${path}" PARENT_SCOPE)
    set(${error} "${tried}" PARENT_SCOPE)
endfunction()
