# The rooms of a layer include each other in one direction alone, from the first of ROOMS to the last:
#   cmake -DFOLDER=<layer's files> -DROOMS=<rooms, with commas> -DEXCEPTION=<from>:<to> -P CheckIncludeOrder.cmake

string(REPLACE "," ";" rooms "${ROOMS}")
get_filename_component(layer "${FOLDER}" NAME)
file(GLOB_RECURSE files RELATIVE "${FOLDER}" "${FOLDER}/*.h" "${FOLDER}/*.cpp")
set(num_includes 0)

foreach(file IN LISTS files)
    string(REGEX REPLACE "/.*" "" from "${file}")
    list(FIND rooms "${from}" from_index)

    if(from_index LESS 0)
        message(SEND_ERROR "${file} is in a room that has no place in the order")
    endif()

    file(STRINGS "${FOLDER}/${file}" includes REGEX "^#include \"${layer}/")

    foreach(include IN LISTS includes)
        string(REGEX REPLACE "^#include \"${layer}/([^/]*)/.*" "\\1" to "${include}")
        list(FIND rooms "${to}" to_index)
        math(EXPR num_includes "${num_includes} + 1")

        if(to_index LESS from_index AND NOT "${from}:${to}" STREQUAL EXCEPTION)
            message(SEND_ERROR "${file} looks up at a room above its own: ${include}")
        endif()
    endforeach()
endforeach()

if(num_includes EQUAL 0)
    message(SEND_ERROR "There are no includes in ${FOLDER}")
endif()
