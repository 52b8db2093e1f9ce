# What the whole build shares, JUCE's own files included.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Our static and object libraries end up in one shared object that exports nothing but its entry.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# A fused multiply-add rounds once where two operations round twice. Without it the compiler's part of the arithmetic is
# the same on every processor. The C library's is not quite: glibc's tanf differs in the last bit between x86-64 and
# arm64 at about one cutoff of a hundred (tests/arm64).
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    add_compile_options(-ffp-contract=off)
endif()

# What counts is in the libraries of our own code; what they are linked into keeps the counts.
if(VARLO_COVERAGE)
    add_link_options(--coverage)
endif()
