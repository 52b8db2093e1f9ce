# Brings in JUCE 8.0.6, exactly that release, from the first of:
#
#   1. VARLO_JUCE_DIR, a folder with JUCE's sources that the user names;
#   2. an installed CMake package;
#   3. the source cache, filled once by scripts/fetch-source.sh.

set(VARLO_JUCE_VERSION 8.0.6)
set(VARLO_JUCE_DIR "" CACHE PATH "A folder with the sources of JUCE ${VARLO_JUCE_VERSION}")

include(Codecs)
include(SourceCache)

if(VARLO_JUCE_DIR)
    if(NOT EXISTS "${VARLO_JUCE_DIR}/modules/juce_core/juce_core.h"
            OR NOT EXISTS "${VARLO_JUCE_DIR}/CMakeLists.txt")
        message(FATAL_ERROR "VARLO_JUCE_DIR (${VARLO_JUCE_DIR}) holds no JUCE sources.")
    endif()

    set(juce_source "${VARLO_JUCE_DIR}")
else()
    find_package(JUCE ${VARLO_JUCE_VERSION} EXACT CONFIG QUIET)

    if(NOT JUCE_FOUND)
        cv_fetch_source(juce_source error juce-${VARLO_JUCE_VERSION})

        if(error)
            message(FATAL_ERROR
                "JUCE ${VARLO_JUCE_VERSION} was not found and could not be fetched. Tried:\n"
                "  - VARLO_JUCE_DIR: not set\n"
                "  - an installed CMake package JUCE ${VARLO_JUCE_VERSION}: none\n"
                "  - the source cache ${VARLO_SOURCE_CACHE}: empty\n"
                "${error}"
                "Put the sources of JUCE ${VARLO_JUCE_VERSION} somewhere and configure again with "
                "-DVARLO_JUCE_DIR=<that folder>.")
        endif()
    endif()
endif()

if(juce_source)
    file(STRINGS "${juce_source}/CMakeLists.txt" found_version REGEX "project\\(JUCE VERSION ")
    string(REGEX REPLACE ".*VERSION ([0-9.]+).*" "\\1" found_version "${found_version}")

    if(NOT found_version VERSION_EQUAL VARLO_JUCE_VERSION)
        message(FATAL_ERROR "${juce_source} is JUCE ${found_version}; ${VARLO_JUCE_VERSION} is needed.")
    endif()

    message(STATUS "JUCE: ${juce_source}")
    add_subdirectory("${juce_source}" "${CMAKE_BINARY_DIR}/juce" EXCLUDE_FROM_ALL)
    set(juce_modules "${juce_source}/modules")
else()
    message(STATUS "JUCE: installed package ${JUCE_DIR}")
    set(juce_modules "${JUCE_MODULES_DIR}")
endif()

if(NOT EXISTS "${juce_modules}/juce_core/zip/zlib")
    cv_link_system_codecs()
endif()
