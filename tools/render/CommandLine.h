#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

namespace cv::render
{
/** A parameter and the value that it is to have, as typed. */
struct Setting
{
    juce::String parameter;
    juce::String value;
};

/** One corner of an automation lane, its value as typed. */
struct Breakpoint
{
    double seconds = 0.0;
    juce::String value;
};

/** A parameter and the corners that it is to follow, in ascending order, at least one. */
struct AutomationSetting
{
    juce::String parameter;
    std::vector<Breakpoint> breakpoints;
};

enum class SampleFormat
{
    integer16,
    integer24,
    float32
};

/** What a command line asks for. All numbers are within their limits; files are not looked at yet. */
struct CommandLine
{
    enum class Action
    {
        render,
        saveState,
        listParameters,
        showHelp,
        showVersion
    };

    Action action = Action::render;

    juce::File input;
    juce::File output;

    /** The output's path as typed. */
    juce::String outputName;

    /** None: the default bundle. */
    std::optional<juce::File> plugin;

    /** What the plug-in starts from, before the settings: a state, a preset or, in this order, both. */
    std::optional<juce::File> stateToLoad;
    std::optional<juce::File> preset;

    std::vector<Setting> settings;
    std::vector<AutomationSetting> automation;

    /** Where the plug-in's state goes at the end. */
    std::optional<juce::File> stateToSave;

    double tailSeconds = 5.0;
    int blockLength = 512;

    /** None: the rate of the input file. */
    std::optional<int> sampleRate;

    bool mixToMono = false;
    bool quiet = false;
    SampleFormat sampleFormat = SampleFormat::integer24;

    /** Reads main()'s arguments without the program's name. Throws UsageError. */
    static CommandLine parse (const juce::StringArray& arguments);

    /** The text of --help, several lines. */
    static juce::String getHelp();

    static constexpr int minSampleRateHz = 8000;
    static constexpr int maxSampleRateHz = 384000;
    static constexpr int maxBlockLength = 65536;
    static constexpr double maxTailSeconds = 3600.0;
};
} // namespace cv::render
