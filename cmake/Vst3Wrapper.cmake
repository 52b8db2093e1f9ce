# cv_let_vst3_blocks_grow(TARGET): JUCE's VST3 wrapper copies each block into memory for the largest block that the host
# has promised, and writes beyond it when the host brings a larger one. TARGET is compiled with a copy of that header in
# which the memory grows; hosts that keep their promise notice nothing.

function(cv_let_vst3_blocks_grow target)
    set(header juce_audio_processors/format_types/juce_VST3Common.h)
    get_target_property(juce_modules juce::juce_audio_processors INTERFACE_JUCE_MODULE_PATH)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${juce_modules}/${header}")
    file(READ "${juce_modules}/${header}" code)

    string(REPLACE
        "        scratchBuffer.clear();\n        channels.clear();\n"
        "        scratchBuffer.grow ((int) data.numSamples);\n        scratchBuffer.clear();\n        channels.clear();\n"
        code "${code}")
    string(REPLACE
        "    void clear() { channelCounter = 0; }\n"
        "    void clear() { channelCounter = 0; }\n\n    void grow (int blockSize)\n    {\n        if (blockSize > buffer.getNumSamples())\n            buffer.setSize (buffer.getNumChannels(), blockSize);\n    }\n"
        code "${code}")
    string(REGEX MATCHALL "scratchBuffer\\.grow|void grow" changes "${code}")
    list(LENGTH changes num_changes)

    if(NOT num_changes EQUAL 2)
        message(WARNING "${header} is not the one that is known to need a change: hosts must keep to their block size")
    endif()

    set(folder "${CMAKE_CURRENT_BINARY_DIR}/wrapper")
    file(CONFIGURE OUTPUT "${folder}/${header}" CONTENT "@code@" @ONLY)
    target_include_directories(${target} BEFORE PRIVATE "${folder}")
endfunction()
