#include "CommandLine.h"

#include "NumberText.h"
#include "RenderError.h"

#include <array>
#include <functional>

namespace cv::render
{
namespace
{
using Action = CommandLine::Action;

juce::File toFile (const juce::String& path)
{
    return juce::File::getCurrentWorkingDirectory().getChildFile (path);
}

juce::String limitsText (int low, int high)
{
    return juce::String (low) + " to " + juce::String (high);
}

/** The two sides of "NAME=VALUE". A name may not hold an equals sign, a value may. */
Setting splitAssignment (const juce::String& option, const juce::String& text)
{
    if (! text.containsChar ('='))
        throw UsageError (option + " takes NAME=VALUE, not \"" + text + "\"");

    Setting result { text.upToFirstOccurrenceOf ("=", false, false).trim(),
                     text.fromFirstOccurrenceOf ("=", false, false).trim() };

    if (result.parameter.isEmpty())
        throw UsageError (option + " lacks the parameter's name in \"" + text + "\"");

    return result;
}

Breakpoint parseBreakpoint (const juce::String& parameter, const juce::String& text)
{
    const auto seconds = parseNumber (text.upToFirstOccurrenceOf (":", false, false));

    if (! seconds || *seconds < 0.0 || ! text.containsChar (':'))
        throw UsageError ("--automate " + parameter + " takes SECONDS:VALUE with seconds from 0 on, not \""
                          + text.trim() + "\"");

    return { *seconds, text.fromFirstOccurrenceOf (":", false, false).trim() };
}

AutomationSetting parseAutomation (const juce::String& text)
{
    const auto [parameter, lane] = splitAssignment ("--automate", text);
    AutomationSetting result { parameter, {} };

    for (const auto& point : juce::StringArray::fromTokens (lane, ",", {}))
        result.breakpoints.push_back (parseBreakpoint (parameter, point));

    if (result.breakpoints.empty())
        throw UsageError ("--automate " + parameter + " has no SECONDS:VALUE");

    for (size_t i = 1; i < result.breakpoints.size(); ++i)
        if (result.breakpoints[i].seconds < result.breakpoints[i - 1].seconds)
            throw UsageError ("--automate " + parameter + " goes back in time, from "
                              + toPlainText (result.breakpoints[i - 1].seconds) + " s to "
                              + toPlainText (result.breakpoints[i].seconds) + " s");

    return result;
}

SampleFormat parseSampleFormat (const juce::String& text)
{
    if (text == "16")
        return SampleFormat::integer16;

    if (text == "24")
        return SampleFormat::integer24;

    if (text == "32f")
        return SampleFormat::float32;

    throw UsageError ("--bits takes 16, 24 or 32f, not \"" + text + "\"");
}

int parseLimited (const juce::String& option, const juce::String& text, int low, int high)
{
    const auto number = parseInteger (text);

    if (! number || *number < low || *number > high)
        throw UsageError (option + " takes a whole number from " + limitsText (low, high) + ", not \"" + text + "\"");

    return *number;
}

double parseTail (const juce::String& text)
{
    const auto seconds = parseNumber (text);

    if (! seconds || *seconds < 0.0 || *seconds > CommandLine::maxTailSeconds)
        throw UsageError ("--tail takes seconds from " + limitsText (0, (int) CommandLine::maxTailSeconds) + ", not \""
                          + text + "\"");

    return *seconds;
}

juce::Point<int> parseEditorSize (const juce::String& text)
{
    const auto width = parseInteger (text.upToFirstOccurrenceOf ("x", false, true));
    const auto height = parseInteger (text.fromFirstOccurrenceOf ("x", false, true));
    const auto isLimited = [] (const auto& number)
    { return number && *number >= 1 && *number <= CommandLine::maxEditorSize; };

    if (! isLimited (width) || ! isLimited (height))
        throw UsageError ("--editor-size takes WIDTHxHEIGHT in pixels, each from "
                          + limitsText (1, CommandLine::maxEditorSize) + ", not \"" + text + "\"");

    return { *width, *height };
}

struct Option
{
    const char* name;
    bool takesValue;
    std::function<void (CommandLine&, const juce::String& value)> apply;
};

const std::vector<Option>& getOptions()
{
    static const std::vector<Option> options {
        { "-o", true,
          [] (auto& line, auto& text)
          {
              line.output = toFile (text);
              line.outputName = text;
          } },
        { "--plugin", true, [] (auto& line, auto& text) { line.plugin = toFile (text); } },
        { "--preset", true, [] (auto& line, auto& text) { line.preset = toFile (text); } },
        { "--load-state", true, [] (auto& line, auto& text) { line.stateToLoad = toFile (text); } },
        { "--save-state", true, [] (auto& line, auto& text) { line.stateToSave = toFile (text); } },
        { "--editor-png", true,
          [] (auto& line, auto& text)
          {
              line.editorPicture = toFile (text);
              line.editorPictureName = text;
          } },
        { "--editor-size", true, [] (auto& line, auto& text) { line.editorSize = parseEditorSize (text); } },
        { "--set", true, [] (auto& line, auto& text) { line.settings.push_back (splitAssignment ("--set", text)); } },
        { "--automate", true, [] (auto& line, auto& text) { line.automation.push_back (parseAutomation (text)); } },
        { "--tail", true, [] (auto& line, auto& text) { line.tailSeconds = parseTail (text); } },
        { "--block", true,
          [] (auto& line, auto& text)
          { line.blockLength = parseLimited ("--block", text, 1, CommandLine::maxBlockLength); } },
        { "--rate", true,
          [] (auto& line, auto& text) {
              line.sampleRate =
                  parseLimited ("--rate", text, CommandLine::minSampleRateHz, CommandLine::maxSampleRateHz);
          } },
        { "--bits", true, [] (auto& line, auto& text) { line.sampleFormat = parseSampleFormat (text); } },
        { "--mono", false, [] (auto& line, auto&) { line.mixToMono = true; } },
        { "--quiet", false, [] (auto& line, auto&) { line.quiet = true; } },
        { "--list", false, [] (auto& line, auto&) { line.action = Action::listParameters; } },
        { "--json", false, [] (auto& line, auto&) { line.asJson = true; } },
        { "--check-display", false, [] (auto& line, auto&) { line.action = Action::checkDisplay; } }
    };

    return options;
}

const Option* findOption (const juce::String& name)
{
    for (const auto& option : getOptions())
        if (name == option.name)
            return &option;

    return nullptr;
}

/** Applies the option at `index` and gives the index of the argument behind it and its value. */
int applyOption (CommandLine& line, const juce::StringArray& arguments, int index)
{
    const auto& argument = arguments[index];
    const auto isAssignment = argument.startsWith ("--") && argument.containsChar ('=');
    const auto name = isAssignment ? argument.upToFirstOccurrenceOf ("=", false, false) : argument;
    const auto* const option = findOption (name);

    if (option == nullptr)
        throw UsageError ("unknown option " + name + "; --help lists what there is");

    if (! option->takesValue)
    {
        if (isAssignment)
            throw UsageError (name + " takes no value");

        option->apply (line, {});
        return index + 1;
    }

    const auto value = isAssignment ? argument.fromFirstOccurrenceOf ("=", false, false) : arguments[index + 1];

    if (value.isEmpty() || (! isAssignment && findOption (value) != nullptr))
        throw UsageError (name + " lacks its value");

    option->apply (line, value);
    return index + (isAssignment ? 1 : 2);
}

void checkRenderFiles (const CommandLine& line, const juce::StringArray& inputs)
{
    if (inputs.isEmpty())
        throw UsageError ("no input file; --help shows how to call this program");

    if (inputs.size() > 1)
        throw UsageError ("several input files need -o with a folder that exists");

    if (line.output == juce::File() && ! line.editorPicture)
        throw UsageError ("no output file: name one with -o");

    if (line.output != juce::File() && ! line.output.hasFileExtension ("wav;flac"))
        throw UsageError ("the output's name must end in .wav or .flac, not \"" + line.output.getFileExtension()
                          + "\"");

    if (line.sampleFormat == SampleFormat::float32 && line.output.hasFileExtension ("flac"))
        throw UsageError ("--bits 32f is for WAV files; FLAC holds 16 or 24 bits");
}

/** A folder may have a name that ends like a file's: that is the output of one input still. */
bool takesFolder (const CommandLine& line, const juce::StringArray& inputs)
{
    return line.output != juce::File() && line.output.isDirectory() && ! inputs.isEmpty()
           && (inputs.size() > 1 || ! line.output.hasFileExtension ("wav;flac"));
}

void checkFolder (const CommandLine& line)
{
    if (line.editorPicture || line.editorSize)
        throw UsageError ("--editor-png is for one input file and an output that is no folder");

    if (line.stateToSave)
        throw UsageError ("--save-state is for one input file and an output that is no folder");
}

void checkEditor (const CommandLine& line)
{
    if (! line.editorPicture)
    {
        if (line.editorSize)
            throw UsageError ("--editor-size is for --editor-png");

        return;
    }

    if (! line.editorPicture->hasFileExtension ("png"))
        throw UsageError ("the picture's name must end in .png, not \"" + line.editorPicture->getFileExtension()
                          + "\"");

    if (line.blockLength > CommandLine::maxBlockLengthWithEditor)
        throw UsageError ("--editor-png plays in blocks of at most "
                          + juce::String (CommandLine::maxBlockLengthWithEditor) + " samples");
}

/** Without any audio file, a state can still be made from presets and settings. */
bool asksForStateAlone (const CommandLine& line, const juce::StringArray& inputs)
{
    return line.stateToSave.has_value() && inputs.isEmpty() && line.output == juce::File() && ! line.editorPicture
           && line.automation.empty();
}

void checkAutomation (const CommandLine& line)
{
    for (auto lane = line.automation.begin(); lane != line.automation.end(); ++lane)
    {
        const auto isSame = [&] (const auto& other) { return other.parameter.equalsIgnoreCase (lane->parameter); };

        if (std::any_of (line.settings.begin(), line.settings.end(), isSame))
            throw UsageError (lane->parameter + " is both set and automated");

        if (std::any_of (line.automation.begin(), lane, isSame))
            throw UsageError (lane->parameter + " is automated twice");
    }
}
} // namespace

CommandLine CommandLine::parse (const juce::StringArray& arguments)
{
    if (arguments.contains ("--help") || arguments.contains ("-h") || arguments.contains ("--version"))
    {
        CommandLine line;
        line.action = arguments.contains ("--version") ? Action::showVersion : Action::showHelp;
        return line;
    }

    CommandLine line;
    juce::StringArray inputs;
    auto optionsHaveEnded = false;

    for (auto index = 0; index < arguments.size();)
    {
        const auto& argument = arguments[index];

        if (! optionsHaveEnded && argument == "--")
        {
            optionsHaveEnded = true;
            ++index;
        }
        else if (optionsHaveEnded || ! argument.startsWithChar ('-'))
        {
            inputs.add (arguments[index++]);
        }
        else
        {
            index = applyOption (line, arguments, index);
        }
    }

    if (line.asJson && line.action != Action::listParameters)
        throw UsageError ("--json is for --list");

    if (line.action != Action::render)
        return line;

    if (asksForStateAlone (line, inputs))
    {
        line.action = Action::saveState;
        return line;
    }

    checkAutomation (line);

    if (takesFolder (line, inputs))
    {
        checkFolder (line);

        for (const auto& input : inputs)
            line.inputsForFolder.push_back (toFile (input));

        return line;
    }

    checkRenderFiles (line, inputs);
    checkEditor (line);
    line.input = toFile (inputs[0]);
    return line;
}

std::vector<CommandLine> CommandLine::forEachInput() const
{
    if (inputsForFolder.empty())
        return { *this };

    std::vector<CommandLine> lines;

    for (const auto& file : inputsForFolder)
    {
        auto& line = lines.emplace_back (*this);
        line.inputsForFolder.clear();
        line.input = file;
        line.output = output.getChildFile (file.getFileNameWithoutExtension() + ".wav");
        line.outputName = juce::File::addTrailingSeparator (outputName) + line.output.getFileName();
    }

    return lines;
}
} // namespace cv::render
