# cmake -DBUNDLE=... -DCLASS=... -DDESCRIPTION=... -P: mends what JUCE's client writes of an LV2 plug-in, each time after it has
# written it, and adds a description of our own, if there is one.

# change(FILE REGEX REPLACEMENT)
function(change file regex replacement)
    file(READ "${BUNDLE}/${file}" text)
    string(REGEX REPLACE "${regex}" "${replacement}" changed "${text}")

    if(changed STREQUAL text)
        message(FATAL_ERROR "${file} is not as JUCE 8.0.6 writes it: \"${regex}\" is not there.")
    endif()

    file(WRITE "${BUNDLE}/${file}" "${changed}")
endfunction()

# The one program that each plug-in has by JUCE's rules has no name and changes nothing: not for hosts' menus.
change(manifest.ttl "<[^>]*:preset1>[^]]*\\] \\.\n" "")

# Hosts sort by the class that the manifest gives.
change(manifest.ttl "\ta lv2:Plugin ;" "\ta lv2:Plugin , lv2:${CLASS} ;")

# MIDI does nothing. The VST3 bundle has no input for it either.
change(dsp.ttl "\t\t\tmidi:MidiEvent ,\n" "")

# A bare address would be the name of a file in the bundle.
change(dsp.ttl "foaf:mbox <" "foaf:mbox <mailto:")

if(DESCRIPTION)
    get_filename_component(name "${DESCRIPTION}" NAME)
    change(manifest.ttl "rdfs:seeAlso <dsp.ttl>" "rdfs:seeAlso <dsp.ttl> , <${name}>")
    file(COPY "${DESCRIPTION}" DESTINATION "${BUNDLE}")
else()
    # It has a maker and a release, which are a project's.
    change(manifest.ttl " , lv2:${CLASS} ;" " , lv2:${CLASS} , <http://usefulinc.com/ns/doap#Project> ;")
endif()
