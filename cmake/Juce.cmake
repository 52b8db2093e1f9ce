# Brings in JUCE 8.0.6, exactly that release, from the first of:
#
#   1. VARLO_JUCE_DIR, a folder with JUCE's sources that the user names;
#   2. an installed CMake package;
#   3. the source cache, filled once by scripts/fetch-source.sh.

set(VARLO_JUCE_VERSION 8.0.6)
set(VARLO_JUCE_DIR "" CACHE PATH "A folder with the sources of JUCE ${VARLO_JUCE_VERSION}")

include(SourceCache)

# cv_link_codecs(TARGET PACKAGES...): gives an interface the system's libraries. Their static libraries where there
# are any: from one distribution to the next, these libraries change their names.
function(cv_link_codecs target)
    foreach(name IN LISTS ARGN)
        pkg_check_modules(VARLO_${name} REQUIRED IMPORTED_TARGET GLOBAL ${name})
        list(GET VARLO_${name}_LIBRARIES 0 library)
        find_library(VARLO_${name}_ARCHIVE NAMES lib${library}.a HINTS ${VARLO_${name}_LIBDIR})

        if(VARLO_${name}_ARCHIVE)
            target_link_libraries(${target} INTERFACE "${VARLO_${name}_ARCHIVE}")
        else()
            target_link_libraries(${target} INTERFACE PkgConfig::VARLO_${name})
        endif()

        target_include_directories(${target} INTERFACE ${VARLO_${name}_INCLUDE_DIRS})
    endforeach()
endfunction()

# Debian's tree carries no copies of the codec and compression libraries: link the system's. A static library comes
# before those that it needs itself. Those of pictures have a way of their own, in pluginCore/clients.
function(cv_link_system_codecs)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(VARLO_ZLIB REQUIRED IMPORTED_TARGET GLOBAL zlib)
    target_link_libraries(juce_core INTERFACE PkgConfig::VARLO_ZLIB)

    pkg_check_modules(VARLO_PICTURES REQUIRED libpng libjpeg)
    target_include_directories(juce_graphics INTERFACE ${VARLO_PICTURES_INCLUDE_DIRS})
    set(CV_PICTURE_CODECS
        "${PROJECT_SOURCE_DIR}/pluginCore/clients/LoadedPng.cpp"
        "${PROJECT_SOURCE_DIR}/pluginCore/clients/NoJpeg.cpp" PARENT_SCOPE)

    # Debian's own way would link them to everything.
    if(TARGET pkgconfig_JUCE_IMG_LINUX_DEPS)
        set_target_properties(pkgconfig_JUCE_IMG_LINUX_DEPS PROPERTIES INTERFACE_LINK_LIBRARIES "")
    endif()

    add_library(cv_audio_codecs INTERFACE)
    cv_link_codecs(cv_audio_codecs flac ogg)
endfunction()

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
