# cv_warnings: JUCE's recommended warnings. For our own files only; linked PRIVATE so that it never reaches JUCE's.
# As errors where the code is judged; somebody else's newer compiler, which may know more of them, still builds it.

option(VARLO_WARNINGS_AS_ERRORS "Treat warnings in our own code as errors" OFF)

add_library(cv_warnings INTERFACE)
target_link_libraries(cv_warnings INTERFACE juce::juce_recommended_warning_flags)

if(VARLO_WARNINGS_AS_ERRORS)
    target_compile_options(cv_warnings INTERFACE
        $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
