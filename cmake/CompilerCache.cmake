# Compiles through ccache where it is installed. JUCE, which builds a program of its own while it is configured and
# takes no launcher of several words for that, has to be there before.

find_program(CCACHE_PROGRAM ccache)

if(CCACHE_PROGRAM)
    # Without these two, and GCC's -fpch-preprocess, ccache keeps nothing that is compiled with a precompiled header.
    set(launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${CCACHE_PROGRAM}")
    set(CMAKE_C_COMPILER_LAUNCHER "${launcher}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${launcher}")
endif()
