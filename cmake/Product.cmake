# cv_add_product(NAME
#     CODE <4 letters> VERSION <x.y.z> DESCRIPTION <text> YEAR <of its release> WEB_SITE <url>
#     VST3_CATEGORIES <words...>
#     LV2_URI <uri> LV2_CLASS <class> [LV2_DESCRIPTION <file.ttl>]
#     [RESOURCES <target>] SOURCES <sources...>)
#
# A product on cv::pluginCore: VST3 and LV2 bundles and a standalone, NAME_VST3, NAME_LV2 and NAME_Standalone. SOURCES
# are its own code, createPluginFilter() included: an object library cv_<name>, whose include path is the calling folder.
# RESOURCES is what juce_add_binary_data made, LV2_DESCRIPTION what JUCE doesn't tell of the LV2 plug-in: the units of its
# parameters, say. All code is in the archive NAME, which compiles nothing but JUCE itself.
#
# Hosts find saved projects by CODE, from which the class IDs in the factory follow, and by LV2_URI: they never change.

include(Vst3Wrapper)

set(CV_COMPANY "Corvane")

function(cv_add_product name)
    cmake_parse_arguments(PARSE_ARGV 1 arg ""
        "CODE;VERSION;DESCRIPTION;YEAR;WEB_SITE;LV2_URI;LV2_CLASS;LV2_DESCRIPTION;RESOURCES"
        "VST3_CATEGORIES;SOURCES")
    string(TOLOWER "${name}" lower_name)

    add_library(cv_${lower_name} OBJECT ${arg_SOURCES})
    target_include_directories(cv_${lower_name} PUBLIC
        "${CMAKE_CURRENT_SOURCE_DIR}"
        "${PROJECT_SOURCE_DIR}/pluginCore")
    target_compile_definitions(cv_${lower_name} PRIVATE
        CV_PRODUCT_COMPANY="${CV_COMPANY}"
        CV_PRODUCT_NAME="${name}"
        CV_PRODUCT_VERSION="${arg_VERSION}"
        CV_PRODUCT_WEB_SITE="${arg_WEB_SITE}")
    target_link_libraries(cv_${lower_name} PUBLIC cv_juce_headers PRIVATE ${arg_RESOURCES} cv_warnings)

    juce_add_plugin(${name}
        VERSION "${arg_VERSION}"
        PRODUCT_NAME "${name}"
        PLUGIN_NAME "${name}"
        DESCRIPTION "${arg_DESCRIPTION}"
        COMPANY_NAME "${CV_COMPANY}"
        COMPANY_WEBSITE "${arg_WEB_SITE}"
        COMPANY_EMAIL "support@corvane.example"
        COMPANY_COPYRIGHT "Copyright (C) ${arg_YEAR} ${CV_COMPANY}"
        BUNDLE_ID "example.corvane.${lower_name}"
        PLUGIN_MANUFACTURER_CODE Corv
        PLUGIN_CODE ${arg_CODE}
        FORMATS VST3 LV2 Standalone
        VST3_CATEGORIES ${arg_VST3_CATEGORIES}
        LV2URI "${arg_LV2_URI}"
        IS_SYNTH FALSE
        IS_MIDI_EFFECT FALSE
        NEEDS_MIDI_INPUT FALSE
        NEEDS_MIDI_OUTPUT FALSE)

    # The modules are PRIVATE: whoever links the archive gets their object code, not their sources. Where JUCE has no
    # codecs of its own for pictures, ours take their place.
    target_sources(${name} PRIVATE ${CV_PICTURE_CODECS})
    target_link_libraries(${name}
        PRIVATE
            cv_pluginCore
            cv_${lower_name}
            juce::juce_audio_processors
            juce::juce_audio_utils
            juce::juce_dsp
        PUBLIC
            cv_juce_config)

    # The bundles carry every resource. Of an archive, the linker takes only what some code names.
    foreach(resources IN ITEMS cv_pluginCore_resources ${arg_RESOURCES})
        target_sources(${name}_VST3 PRIVATE $<TARGET_OBJECTS:${resources}>)
        target_sources(${name}_LV2 PRIVATE $<TARGET_OBJECTS:${resources}>)
    endforeach()

    cv_let_vst3_blocks_grow(${name}_VST3)
    cv_complete_lv2(${name}_LV2 "${arg_LV2_URI}" ${arg_LV2_CLASS} "${arg_LV2_DESCRIPTION}")

    # The archive also holds what only the standalone needs: sound cards. The bundles' hosts have them.
    if(CMAKE_SYSTEM_NAME STREQUAL Linux)
        foreach(client IN ITEMS ${name}_VST3 ${name}_LV2 ${name}_Standalone)
            target_link_options(${client} PRIVATE LINKER:--as-needed)
        endforeach()

        target_sources(${name}_Standalone PRIVATE "${PROJECT_SOURCE_DIR}/pluginCore/clients/StandaloneMain.cpp")
        target_compile_definitions(${name}_Standalone PRIVATE JUCE_USE_CUSTOM_PLUGIN_STANDALONE_ENTRYPOINT=1)
    endif()

    # Building a bundle loads it once, to write its moduleinfo.json or its Turtle files. What the plug-in makes at
    # start is to land in the build folder then, not in the builder's home.
    set(loading_home "${CMAKE_CURRENT_BINARY_DIR}/loading-home")
    file(MAKE_DIRECTORY "${loading_home}")
    set_target_properties(${name}_VST3 ${name}_LV2 PROPERTIES
        RULE_LAUNCH_CUSTOM "\"${CMAKE_COMMAND}\" -E env \"HOME=${loading_home}\"")
endfunction()

# What JUCE writes of an LV2 bundle, completed each time after it has written it.
function(cv_complete_lv2 target uri class description)
    # Debian's JUCE checks for this before it has read JUCE's own header that tells it.
    target_compile_definitions(${target} PRIVATE JucePlugin_LV2URI="${uri}")

    set(script "${PROJECT_SOURCE_DIR}/cmake/CompleteLv2.cmake")
    set_target_properties(${target} PROPERTIES LINK_DEPENDS "${description};${script}")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND "${CMAKE_COMMAND}" "-DBUNDLE=$<TARGET_FILE_DIR:${target}>" -DCLASS=${class}
                "-DDESCRIPTION=${description}" -P "${script}"
        VERBATIM)
endfunction()
