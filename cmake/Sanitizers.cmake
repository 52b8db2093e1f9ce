# Everything in the build carries the same instrumentation: a plug-in built with AddressSanitizer
# loads only into a host built with it.

if(VARLO_SANITIZERS)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        message(FATAL_ERROR "VARLO_SANITIZERS needs GCC or Clang, this is ${CMAKE_CXX_COMPILER_ID}.")
    endif()

    # The vptr check compares type information across shared objects, where hidden visibility
    # makes equal types differ. The checks of every pointer find little that AddressSanitizer doesn't,
    # and with them JUCE takes a third longer to compile.
    add_compile_options("-fsanitize=${VARLO_SANITIZERS}" -fno-sanitize-recover=all
                        -fno-sanitize=vptr,null,alignment,object-size,nonnull-attribute -fno-omit-frame-pointer)
    add_link_options("-fsanitize=${VARLO_SANITIZERS}")
endif()
