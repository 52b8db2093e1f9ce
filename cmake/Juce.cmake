# Brings in JUCE 8.0.6, exactly that release, from the first of:
#
#   1. VARLO_JUCE_DIR, a folder with JUCE's sources that the user names;
#   2. an installed CMake package;
#   3. the source cache, filled once from Debian's source package, else from upstream's git tag.
#
# The cache lies outside the build folder, so that a fresh clone or a second build folder need not
# fetch again.

set(VARLO_JUCE_VERSION 8.0.6)
set(VARLO_JUCE_DIR "" CACHE PATH "A folder with the sources of JUCE ${VARLO_JUCE_VERSION}")

include(SourceCache)

# Leaves Debian's source package, with Debian's patches applied, in `folder`. Sets `error` to the
# reason when it can't.
function(varlo_fetch_juce_from_debian folder error)
    set(version 8.0.6+ds-2)
    set(orig_sha 4126ec8066866a1ccbc9cdd2beac712fd51e55ac7f24d8fdc45077b187a358ef)
    set(debian_sha 98f781365d85d35639b5c47416b769c3d68ad9858c8559fc6c80bb95710976a1)
    set(dsc_sha 875f60aa9810331de2b41dcc3b2d3af86dbcb8bbb4571b30d26e34cc3f96db58)

    find_program(DPKG_SOURCE_PROGRAM dpkg-source)

    if(NOT DPKG_SOURCE_PROGRAM)
        set(${error} "dpkg-source is not installed (package dpkg-dev)" PARENT_SCOPE)
        return()
    endif()

    set(download "${folder}.download")
    file(REMOVE_RECURSE "${download}")
    message(STATUS "Fetching JUCE ${VARLO_JUCE_VERSION}: Debian's source package ${version}")

    varlo_fetch_debian_source(juce ${version} "${download}" message
        "${orig_sha}:juce_8.0.6+ds.orig.tar.xz"
        "${debian_sha}:juce_8.0.6+ds-2.debian.tar.xz"
        "${dsc_sha}:juce_8.0.6+ds-2.dsc")

    if(NOT message)
        # The three checksums above stand in for the signature check, which would need the
        # keyring of Debian's maintainers.
        execute_process(
            COMMAND "${DPKG_SOURCE_PROGRAM}" --no-check -x "juce_${version}.dsc" unpacked
            WORKING_DIRECTORY "${download}"
            RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE message)

        if(result EQUAL 0)
            set(message "")
            file(RENAME "${download}/unpacked" "${folder}")
        endif()
    endif()

    file(REMOVE_RECURSE "${download}")
    set(${error} "${message}" PARENT_SCOPE)
endfunction()

# Leaves upstream's tag in `folder`. Sets `error` to the reason when it can't.
function(varlo_fetch_juce_from_git folder error)
    set(repository https://github.com/juce-framework/JUCE.git)
    find_package(Git QUIET)

    if(NOT GIT_FOUND)
        set(${error} "git is not installed" PARENT_SCOPE)
        return()
    endif()

    # FetchContent can only end the configure step when it fails: ask first.
    execute_process(
        COMMAND "${GIT_EXECUTABLE}" ls-remote --exit-code --tags "${repository}" ${VARLO_JUCE_VERSION}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE message TIMEOUT 60)

    if(NOT result EQUAL 0)
        string(STRIP "${message}" message)
        set(${error} "${repository} can't be reached (${message})" PARENT_SCOPE)
        return()
    endif()

    message(STATUS "Fetching JUCE ${VARLO_JUCE_VERSION}: upstream's git tag")
    include(FetchContent)

    # What an interrupted try left would pass for a finished one.
    set(subbuild "${CMAKE_BINARY_DIR}/_deps/juce-subbuild")
    file(REMOVE_RECURSE "${subbuild}" "${folder}.download")
    FetchContent_Populate(varlo_juce QUIET
        GIT_REPOSITORY "${repository}"
        GIT_TAG ${VARLO_JUCE_VERSION}
        GIT_SHALLOW TRUE
        SOURCE_DIR "${folder}.download"
        BINARY_DIR "${CMAKE_BINARY_DIR}/_deps/juce-build"
        SUBBUILD_DIR "${subbuild}")
    file(RENAME "${folder}.download" "${folder}")
    set(${error} "" PARENT_SCOPE)
endfunction()

# Sets `result` to a folder with JUCE's sources in the cache, fetching them when they are not there.
function(varlo_cached_juce result)
    set(folder "${VARLO_SOURCE_CACHE}/juce-${VARLO_JUCE_VERSION}")
    set(landmark "${folder}/CMakeLists.txt")

    if(NOT EXISTS "${landmark}")
        varlo_lock_source_cache()

        # Another build folder may have fetched them while this one waited.
        if(NOT EXISTS "${landmark}")
            varlo_fetch_juce_from_debian("${folder}" debian_error)

            if(debian_error)
                message(STATUS "Debian's source package of JUCE: ${debian_error}")
                varlo_fetch_juce_from_git("${folder}" git_error)
            endif()
        endif()

        varlo_unlock_source_cache()
    endif()

    if(NOT EXISTS "${landmark}")
        message(FATAL_ERROR
            "JUCE ${VARLO_JUCE_VERSION} was not found and could not be fetched. Tried:\n"
            "  - VARLO_JUCE_DIR: not set\n"
            "  - an installed CMake package JUCE ${VARLO_JUCE_VERSION}: none\n"
            "  - the source cache ${VARLO_SOURCE_CACHE}: empty\n"
            "  - Debian's source package: ${debian_error}\n"
            "  - upstream's git tag: ${git_error}\n"
            "Put the sources of JUCE ${VARLO_JUCE_VERSION} somewhere and configure again with "
            "-DVARLO_JUCE_DIR=<that folder>.")
    endif()

    set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# Debian's tree carries no copies of the codec and compression libraries: link the system's.
function(varlo_link_system_codecs)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(VARLO_ZLIB REQUIRED IMPORTED_TARGET GLOBAL zlib)
    pkg_check_modules(VARLO_IMAGES REQUIRED IMPORTED_TARGET GLOBAL libpng libjpeg)
    pkg_check_modules(VARLO_CODECS REQUIRED IMPORTED_TARGET GLOBAL flac vorbis vorbisfile vorbisenc ogg)

    target_link_libraries(juce_core INTERFACE PkgConfig::VARLO_ZLIB)
    target_link_libraries(juce_graphics INTERFACE PkgConfig::VARLO_IMAGES)
    target_link_libraries(juce_audio_formats INTERFACE PkgConfig::VARLO_CODECS)
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
        varlo_cached_juce(juce_source)
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
    varlo_link_system_codecs()
endif()
