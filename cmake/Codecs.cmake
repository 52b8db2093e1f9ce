# The codec and compression libraries that upstream's JUCE has copies of and Debian's has not.

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

# cv_link_system_codecs(): links the system's instead of JUCE's copies. A static library comes before those that it
# needs itself. Those of pictures have a way of their own, in pluginCore/clients.
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
