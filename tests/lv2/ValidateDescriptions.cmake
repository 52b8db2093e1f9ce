# cmake -DVALIDATOR=... -DBUNDLE=... -P: fails unless the validator finds no more amiss in the bundle's descriptions
# than what JUCE's client writes of each editor.

file(GLOB vocabularies /usr/lib/lv2/*.lv2/*.ttl)
file(GLOB descriptions "${BUNDLE}/*.ttl")

execute_process(
    COMMAND "${VALIDATOR}" ${vocabularies} ${descriptions}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
message("${output}")

if(NOT output MATCHES "among [1-9][0-9]* files .checked [1-9][0-9][0-9]+ restrictions")
    message(FATAL_ERROR "The validator (${result}) does not say that it has checked anything.")
endif()

# Two extensions count as data and as features although the vocabularies know them as one of both only.
set(known
    "lv2core#ExtensionData>[ \n]+urn:corvane:varlo:UI[ \n]+http://lv2plug.in/ns/lv2core#extensionData[ \n]+http://lv2plug.in/ns/extensions/ui#noUserResize"
    "lv2core#Feature>[ \n]+urn:corvane:varlo:UI[ \n]+http://lv2plug.in/ns/lv2core#optionalFeature[ \n]+http://lv2plug.in/ns/ext/options#interface")

foreach(error IN LISTS known)
    string(REGEX REPLACE "error: Object not in range <http://lv2plug.in/ns/${error}" "" output "${output}")
endforeach()

if(output MATCHES "error: |warning: ")
    message(FATAL_ERROR "There is more than the two that JUCE writes.")
endif()
