#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <string>
#include <vector>

namespace cv::test
{
/** Notes what a host hears of a parameter: "begin", "value", "end". */
class HostLog final : private juce::AudioProcessorParameter::Listener
{
public:
    explicit HostLog (juce::AudioProcessorParameter& parameterToWatch) : parameter (parameterToWatch)
    {
        parameter.addListener (this);
    }

    ~HostLog() override { parameter.removeListener (this); }

    std::vector<std::string> entries;

private:
    void parameterValueChanged (int, float) override { entries.emplace_back ("value"); }

    void parameterGestureChanged (int, bool begins) override { entries.emplace_back (begins ? "begin" : "end"); }

    juce::AudioProcessorParameter& parameter;
};
} // namespace cv::test
