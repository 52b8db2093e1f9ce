#pragma once

#include "render/DisplayConnection.h"
#include "render/PluginHost.h"
#include "soak/AudioThread.h"
#include "soak/EditorActions.h"
#include "soak/PluginActions.h"
#include "soak/Watch.h"
#include "support/RealMouse.h"

#include <functional>
#include <vector>

namespace cv::soak
{
/** A plug-in that plays, and users and a host who do something to it all the time, at random. Message thread. */
class Soak
{
public:
    struct Options
    {
        juce::File bundle;
        double seconds = 60.0;
        juce::int64 seed = 1;

        /** 2 plays twice as fast as it sounds. */
        double speed = 1.0;
    };

    /** Throws render::RenderError when there is no display or no plug-in. */
    explicit Soak (const Options&);

    /** Takes the time that the options say. */
    void run();

    /** Prints what was done and measured, and what went wrong; true when nothing did. Call once, last. */
    bool report();

private:
    struct Action
    {
        const char* name;
        int weightWhenOpen;
        int weightWhenClosed;
        std::function<bool()> perform;
        int numTries = 0;
        int numEffects = 0;
    };

    std::vector<Action> makeActions();
    void performOne();
    void runUntil (double secondsFromStart);
    juce::int64 closeAndMeasure();
    juce::StringArray findFaults() const;

    const Options options;
    juce::Random random;
    const double startMilliseconds = juce::Time::getMillisecondCounterHiRes();

    const render::DisplayConnection display;
    test::RealMouse mouse;
    const render::PluginHost host;
    Watch watch;
    AudioThread audio;
    PluginActions pluginActions;
    EditorActions editorActions;
    std::vector<Action> actions;

    juce::int64 firstMemory = 0;
    juce::int64 lastMemory = 0;

    JUCE_DECLARE_NON_COPYABLE (Soak)
};
} // namespace cv::soak
