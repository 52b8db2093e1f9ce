#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

namespace cv::pluginCore
{
/** Fetches the text behind an address: a plain GET that follows up to five redirects, without a time
    limit of its own. Blocks until the whole answer is there. Not for the message thread.

    Nothing comes back when no connection or no answer came about, when the answer broke off or is longer
    than `maxWebTextBytes`, when there were too many redirects, or when `shouldContinue` says false, which
    is asked on the calling thread every `webTextPollMilliseconds`. The call then returns at once, whatever
    the network is doing; what is left of the request ends in the background. The status of an answer
    doesn't matter.
*/
std::optional<juce::String> readWebText (const juce::URL&, const std::function<bool()>& shouldContinue);

constexpr juce::int64 maxWebTextBytes = 32 * 1024 * 1024;
constexpr int webTextPollMilliseconds = 20;
} // namespace cv::pluginCore
