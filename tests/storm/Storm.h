#pragma once

#include "render/DisplayConnection.h"
#include "render/EditorFrame.h"
#include "soak/Watch.h"
#include "storm/AudioThreads.h"
#include "storm/Instance.h"
#include "storm/ProcessUse.h"
#include "support/RealMouse.h"

#include <functional>
#include <memory>
#include <vector>

namespace cv::storm
{
/** A host with many instances of the plug-in and a few of their editors, in which everything happens to any of them
    at any time. Message thread.
*/
class Storm
{
public:
    struct Options
    {
        juce::File bundle;
        double seconds = 60.0;
        juce::int64 seed = 1;
        int numInstances = 64; // as many as editors at least
        int numEditors = 8;
    };

    static constexpr auto numAudioThreads = 2;

    /** Throws render::RenderError when there is no display or no plug-in. */
    explicit Storm (const Options&);
    ~Storm();

    /** Takes the time that the options say, and what it takes to create all instances twice and to look at what is
        left.
    */
    void run();

    /** Prints what was done and measured, and what went wrong; true when nothing did. Call once, last. */
    bool report();

private:
    struct Action
    {
        const char* name;
        int weight;
        std::function<bool()> perform;
        int numTimes = 0;
    };

    struct Editor
    {
        size_t instance;
        std::unique_ptr<render::EditorFrame> frame;
    };

    std::vector<Action> makeActions();
    std::unique_ptr<juce::AudioPluginInstance> createPlugin();
    void runFor (double seconds);
    void fill();
    void empty();
    void performOne();
    ProcessUse emptyAndMeasure (const ProcessUse* expected);
    juce::StringArray findFaults() const;

    size_t pickIndex();
    juce::AudioPluginInstance* pickPlugin();
    render::EditorFrame* pickEditor();

    bool create();
    bool destroy();
    bool destroyAll();
    bool prepare();
    void prepare (Instance&);
    bool release();
    bool saveState();
    bool restoreState();
    bool moveParameters();
    bool openEditor();
    bool closeEditor();
    bool resizeEditor();
    bool leaveInTheMidst();
    void enterMidst (const render::EditorFrame&);
    bool click();
    void clickAt (const render::EditorFrame&, juce::Point<int> place);
    bool drag();

    const Options options;
    juce::Random random;

    const render::DisplayConnection display;
    test::RealMouse mouse;
    juce::VST3PluginFormat format;
    juce::PluginDescription description;
    soak::Watch watch;
    std::vector<Instance> instances;
    std::vector<juce::MemoryBlock> states;
    std::vector<Editor> editors;
    std::vector<Action> actions;
    AudioThreads audio;

    int numCreated = 0;
    int numCreatedBefore = 0;
    ProcessUse before;
    ProcessUse after;

    JUCE_DECLARE_NON_COPYABLE (Storm)
};
} // namespace cv::storm
