#include "soak/PluginActions.h"

#include "soak/MessageTurns.h"

namespace cv::soak
{
namespace
{
/** Behind them the host has its own, for the bypass, which no state holds. */
constexpr auto numParameters = 6;

bool areClose (const std::vector<float>& a, const std::vector<float>& b)
{
    constexpr auto tolerance = 1.0e-3f;
    return std::equal (a.begin(), a.end(), b.begin(), b.end(),
                       [] (float x, float y) { return std::abs (x - y) < tolerance; });
}
} // namespace

PluginActions::PluginActions (juce::AudioPluginInstance& pluginToUse, juce::Random& randomToUse)
    : plugin (pluginToUse)
    , random (randomToUse)
{
}

std::vector<float> PluginActions::getValues() const
{
    std::vector<float> values;

    for (auto i = 0; i < numParameters; ++i)
        values.push_back (plugin.getParameters()[i]->getValue());

    return values;
}

juce::MemoryBlock PluginActions::getState() const
{
    juce::MemoryBlock state;
    plugin.getStateInformation (state);
    return state;
}

bool PluginActions::automate()
{
    constexpr auto numSteps = 10;
    constexpr auto stepMilliseconds = 20;

    auto& parameter = *plugin.getParameters()[random.nextInt (numParameters)];
    const auto former = getState();
    const auto start = parameter.getValue();
    const auto end = start < 0.5f ? 0.6f + 0.4f * random.nextFloat() : 0.4f * random.nextFloat();

    for (auto i = 1; i <= numSteps; ++i)
    {
        parameter.setValue (start + (end - start) * (float) i / (float) numSteps);
        runMessagesFor (stepMilliseconds);
    }

    return runMessagesUntil ([&] { return getState() != former; });
}

bool PluginActions::saveState()
{
    constexpr size_t maxNumStates = 8;

    // What the last action has set may still be on its way to the plug-in.
    runMessagesFor (100);
    states.push_back ({ getState(), getValues() });

    if (states.size() > maxNumStates)
        states.erase (states.begin());

    return ! states.back().data.isEmpty();
}

bool PluginActions::loadState()
{
    if (states.empty())
        saveState();

    const auto& state = states[(size_t) random.nextInt ((int) states.size())];
    plugin.setStateInformation (state.data.getData(), (int) state.data.getSize());
    return runMessagesUntil ([&] { return areClose (getValues(), state.values); });
}
} // namespace cv::soak
