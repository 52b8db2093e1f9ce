# cv_warnings: JUCE's recommended warnings, as errors. For our own files only; linked PRIVATE so
# that it never reaches JUCE's.

option(VARLO_WARNINGS_AS_ERRORS "Treat warnings in our own code as errors" ON)

add_library(cv_warnings INTERFACE)
target_link_libraries(cv_warnings INTERFACE juce::juce_recommended_warning_flags)

if(VARLO_WARNINGS_AS_ERRORS)
    target_compile_options(cv_warnings INTERFACE
        $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
