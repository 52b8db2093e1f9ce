#pragma once

#include <juce_graphics/juce_graphics.h>

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
        checkDisplay,
        showHelp,
        showVersion
    };

    Action action = Action::render;

    juce::File input;

    /** All inputs, where each of them goes into the folder that `output` is; forEachInput() tells them apart. */
    std::vector<juce::File> inputsForFolder;

    /** No file where only the editor's picture is asked for. */
    juce::File output;

    /** The output's path as typed. */
    juce::String outputName;

    /** Where the picture of the editor goes; none for a render without an editor. */
    std::optional<juce::File> editorPicture;

    /** The picture's path as typed. */
    juce::String editorPictureName;

    /** Width and height of the editor in pixels; none: what it opens at. */
    std::optional<juce::Point<int>> editorSize;

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

    /** The list of parameters is for programs. */
    bool asJson = false;
    SampleFormat sampleFormat = SampleFormat::integer24;

    /** Reads main()'s arguments without the program's name. Throws UsageError. */
    static CommandLine parse (const juce::StringArray& arguments);

    /** This line once for each of its renders, with one input and one output. */
    std::vector<CommandLine> forEachInput() const;

    /** The text of --help, several lines. */
    static juce::String getHelp();

    static constexpr int minSampleRateHz = 8000;
    static constexpr int maxSampleRateHz = 384000;
    static constexpr int maxBlockLength = 65536;

    /** With an editor, which draws what it hears: it keeps a few thousand samples of sound until it next draws. */
    static constexpr int maxBlockLengthWithEditor = 4096;
    static constexpr int maxEditorSize = 10000;
    static constexpr double maxTailSeconds = 3600.0;
};
} // namespace cv::render
