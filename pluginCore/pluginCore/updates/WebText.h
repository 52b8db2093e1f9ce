#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

namespace cv::pluginCore
{
/** Fetches the text behind an address: a plain GET that follows up to five redirects, to http and https
    alone, without a time limit of its own. Blocks until the whole answer is there. Not for the message thread.

    The server isn't trusted. Nothing comes back when no connection or no answer came about, when the answer
    broke off or is longer than `maxBytes`, when there were too many redirects or one to another kind of
    address, or when `shouldContinue` says false, which is asked on the calling thread every
    `webTextPollMilliseconds`. The call then returns at once, whatever the network is doing; what is left of
    the request ends in the background. The status of an answer doesn't matter.
*/
std::optional<juce::String> readWebText (const juce::URL&,
                                         juce::int64 maxBytes,
                                         const std::function<bool()>& shouldContinue);

/** The text of an answer: UTF-8, with a byte order mark or without; bytes that are none are taken for Latin-1, one
    character each. It ends at the first 0. Any thread.
*/
juce::String decodeWebText (const void* bytes, size_t numBytes);

/** Where a server sends a client from an address: the text is that of a Location header, relative to that
    address or not. None where it leads away from http and https. Any thread.
*/
std::optional<juce::URL> resolveRedirect (const juce::URL& from, const juce::String& location);

constexpr int webTextPollMilliseconds = 20;
} // namespace cv::pluginCore
