# Two interfaces on JUCE for our own code.
#
# A JUCE module target carries its sources: whoever links it compiles it. Only the plug-in's shared
# code does so; everything else takes the headers from here and the object code from there, so JUCE
# is compiled once for the plug-in, the tests and the benchmarks.

# The one list of JUCE settings of the plug-in. All that ends up in one binary must agree on it.
# libcurl and JACK are looked for when they are needed, and missed without harm.
add_library(cv_juce_config INTERFACE)
target_compile_definitions(cv_juce_config INTERFACE
    JUCE_JACK=$<PLATFORM_ID:Linux>
    JUCE_LOAD_CURL_SYMBOLS_LAZILY=1
    JUCE_USE_CURL=1
    JUCE_USE_FLAC=0
    JUCE_USE_OGGVORBIS=0
    JUCE_WEB_BROWSER=0
    JUCE_VST3_CAN_REPLACE_VST2=0
    JUCE_STRICT_REFCOUNTEDPOINTER=1
    $<$<CONFIG:Debug>:JUCE_LOG_ASSERTIONS=1>)

# Nothing links them, so what is needed of them is their headers.
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(VARLO_LOADED_LATER REQUIRED libcurl jack)
    target_include_directories(cv_juce_config SYSTEM INTERFACE ${VARLO_LOADED_LATER_INCLUDE_DIRS})
endif()

# cv_add_juce_headers(TARGET MODULES...): an interface with the modules' headers and definitions, without
# their sources.
function(cv_add_juce_headers target)
    add_library(${target} INTERFACE)
    target_compile_features(${target} INTERFACE cxx_std_20)

    foreach(module IN LISTS ARGN)
        target_include_directories(${target} SYSTEM INTERFACE
            $<TARGET_PROPERTY:juce::${module},INTERFACE_INCLUDE_DIRECTORIES>)
        target_compile_definitions(${target} INTERFACE
            $<TARGET_PROPERTY:juce::${module},INTERFACE_COMPILE_DEFINITIONS>)
    endforeach()
endfunction()

cv_add_juce_headers(cv_juce_headers juce_audio_processors juce_dsp)
target_link_libraries(cv_juce_headers INTERFACE cv_juce_config)
