#include "CommandLine.h"
#include "Crash.h"
#include "EditorWindow.h"
#include "Interruption.h"
#include "ParameterTable.h"
#include "PictureFile.h"
#include "PluginState.h"
#include "RenderError.h"
#include "Renderer.h"
#include "StandardStreams.h"
#include "TemporaryOutput.h"
#include "pluginCore/files/FilePath.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace cv::render
{
namespace
{
/** Once each, however many inputs there are. */
void printWarnings (const juce::StringArray& warnings)
{
    static juce::StringArray printed;

    for (const auto& warning : warnings)
        if (printed.addIfNotAlreadyThere (warning))
            std::cerr << "varlo-render: warning: " << warning << std::endl;
}

void applySettings (const PluginHost& host, const CommandLine& line)
{
    const auto doubts = line.preset ? PluginState::findDoubtsInPreset (*line.preset, host) : juce::StringArray();

    if (line.stateToLoad)
        PluginState::fromFile (*line.stateToLoad, host).applyTo (host);

    if (line.preset)
    {
        PluginState::fromPreset (*line.preset, host).applyTo (host);
        printWarnings (doubts);
    }

    for (const auto& setting : line.settings)
    {
        const auto text = host.getParameter (setting.parameter);
        text.getParameter().setValue (text.toNormalised (setting.value));
    }
}

std::vector<Automation> makeAutomation (const PluginHost& host, const CommandLine& line)
{
    std::vector<Automation> lanes;

    for (const auto& setting : line.automation)
        lanes.emplace_back (host.getParameter (setting.parameter), setting.breakpoints);

    return lanes;
}

juce::String toText (SampleFormat format)
{
    switch (format)
    {
        case SampleFormat::integer16:
            return "16 bit";
        case SampleFormat::integer24:
            return "24 bit";
        case SampleFormat::float32:
            return "32 bit float";
    }

    return {};
}

void printSummary (const CommandLine& line, const AudioInput& input, double audioSeconds, double renderSeconds)
{
    std::cout << line.outputName << ": " << juce::String (audioSeconds, 2) << " s, "
              << (input.getNumChannels() == 1 ? "mono" : "stereo") << ", " << input.getSampleRate() << " Hz, "
              << toText (line.sampleFormat) << ", "
              << juce::roundToInt (audioSeconds / juce::jmax (renderSeconds, 1.0e-6)) << " times real time"
              << std::endl;
}

void printClipping (const AudioOutput& output)
{
    if (output.getNumClippedSamples() == 0)
        return;

    std::cout << output.getNumClippedSamples() << " samples above full scale were clipped, peak +"
              << juce::String (juce::Decibels::gainToDecibels (output.getPeak()), 1)
              << " dBFS; a WAV file with --bits 32f keeps them" << std::endl;
}

/** Renders, with the editor on the screen if there is a window, and gives what that showed at the end. */
juce::Image renderAll (const CommandLine& line, Renderer& renderer, AudioOutput* output, EditorWindow* window)
{
    ProgressLine progress (line.quiet);
    renderer.run (output, progress,
                  [window] (double seconds)
                  {
                      if (window != nullptr)
                          window->letRun (seconds);
                  });

    auto picture = window != nullptr ? window->capture() : juce::Image();

    if (output != nullptr)
        output->commit();

    if (window != nullptr)
        writePicture (picture, *line.editorPicture);

    return picture;
}

/** The same file under another name too: through a link, or another way to its folder. */
bool areSameFile (const juce::File& a, const juce::File& b)
{
    const auto toPath = [] (const juce::File& file)
    {
        std::error_code error;
        const auto path = pluginCore::toStandardPath (file);
        const auto canonical = std::filesystem::weakly_canonical (path, error);
        return error ? path : canonical;
    };

    return toPath (a) == toPath (b);
}

/** Of two outputs in one file only the last would stay. */
void checkOutputsDiffer (const CommandLine& line)
{
    if (! line.stateToSave)
        return;

    for (const auto& [option, file] :
         { std::pair ("-o", std::optional (line.output)), std::pair ("--editor-png", line.editorPicture) })
        if (file && *file != juce::File() && areSameFile (*file, *line.stateToSave))
            throw UsageError (juce::String (option)
                              + " and --save-state name the same file: " + file->getFullPathName());
}

void checkTargets (const CommandLine& line)
{
    checkOutputsDiffer (line);

    for (const auto& file : { std::optional (line.output), line.editorPicture, line.stateToSave })
        if (file && *file != juce::File())
            TemporaryOutput::checkTarget (*file);
}

void render (const CommandLine& line)
{
    checkTargets (line);

    // Opened before the plug-in opens it. It closes after all windows have.
    std::optional<DisplayConnection> display;

    if (line.editorPicture)
        display.emplace();

    AudioInput input (line.input, line.sampleRate, line.mixToMono);

    PluginHost host (line.plugin);
    applySettings (host, line);

    Renderer renderer (host, input, makeAutomation (host, line),
                       std::llround (line.tailSeconds * input.getSampleRate()), line.blockLength);

    installSignalHandlers();
    std::optional<AudioOutput> output;
    std::optional<EditorWindow> window;

    if (line.output != juce::File())
        output.emplace (line.output, input.getNumChannels(), input.getSampleRate(), line.sampleFormat);

    if (display)
        window.emplace (*display, host.getInstance(), line.editorSize);

    const auto start = juce::Time::getMillisecondCounterHiRes();
    const auto picture = renderAll (line, renderer, output ? &*output : nullptr, window ? &*window : nullptr);

    if (line.stateToSave)
        PluginState::of (host).write (*line.stateToSave);

    if (line.quiet)
        return;

    const auto renderSeconds = (juce::Time::getMillisecondCounterHiRes() - start) / 1000.0;

    if (output)
    {
        printSummary (line, input, (double) renderer.getOutputLength() / input.getSampleRate(), renderSeconds);
        printClipping (*output);
    }

    if (window)
        std::cout << line.editorPictureName << ": the editor, " << picture.getWidth() << " x " << picture.getHeight()
                  << " pixels" << std::endl;
}

int printError (const juce::String& message, int exitCode)
{
    std::cerr << "varlo-render: " << message.replaceCharacters ("\r\n", "  ") << std::endl;
    return exitCode;
}

/** No result may take the place of another one, or of an input. */
void checkResultsDiffer (const std::vector<CommandLine>& lines)
{
    for (const auto& line : lines)
    {
        for (const auto& other : lines)
            if (areSameFile (line.output, other.input))
                throw UsageError (line.outputName + " would replace an input");

        for (const auto* other = lines.data(); other != &line; ++other)
            if (areSameFile (line.output, other->output))
                throw UsageError ("two inputs would become " + line.outputName);
    }
}

/** Renders each input. One that can't be rendered is told at once and keeps no other from its turn. Gives the exit
    code.
*/
int renderEach (const CommandLine& all)
{
    if (all.inputsForFolder.empty())
    {
        render (all);
        return 0;
    }

    const auto lines = all.forEachInput();
    checkResultsDiffer (lines);
    auto exitCode = 0;

    for (const auto& line : lines)
    {
        try
        {
            render (line);
        }
        catch (const RenderError& error)
        {
            if (error.getExitCode() == RenderError::interruptedExitCode)
                throw;

            exitCode = printError (juce::CharPointer_UTF8 (error.what()), error.getExitCode());
        }
    }

    return exitCode;
}

void saveState (const CommandLine& line)
{
    TemporaryOutput::checkTarget (*line.stateToSave);
    const PluginHost host (line.plugin);
    applySettings (host, line);
    PluginState::of (host).write (*line.stateToSave);
}

int run (const CommandLine& line)
{
    switch (line.action)
    {
        case CommandLine::Action::showHelp:
            std::cout << CommandLine::getHelp();
            break;
        case CommandLine::Action::showVersion:
            std::cout << "varlo-render " << VARLO_RENDER_VERSION << "\n";
            break;
        case CommandLine::Action::listParameters:
        {
            const PluginHost host (line.plugin);
            std::cout << (line.asJson ? makeParameterJson (host.getInstance())
                                      : makeParameterTable (host.getInstance()));
            break;
        }
        case CommandLine::Action::checkDisplay:
            DisplayConnection();
            break;
        case CommandLine::Action::saveState:
            saveState (line);
            break;
        case CommandLine::Action::render:
            return renderEach (line);
    }

    return 0;
}

/** Arguments are UTF-8, whatever the locale; names of files may hold other bytes, too. */
juce::StringArray toStrings (int numArguments, char** arguments)
{
    juce::StringArray result;

    for (auto i = 0; i < numArguments; ++i)
    {
        const auto argument = pluginCore::toText (arguments[i]);

        if (! argument)
            throw UsageError ("argument " + juce::String (i + 1) + " is no UTF-8 text");

        result.add (*argument);
    }

    return result;
}

/** Has the plug-in name its values in English: scripts type them, "Bypass=On", and have to mean the same
    on every machine.
*/
void speakEnglish()
{
#if JUCE_LINUX
    setenv ("LC_ALL", "C", 1);
#endif
}

} // namespace
} // namespace cv::render

int main (int argc, char** argv)
{
    using namespace cv::render;
    speakEnglish();

    keepStandardPlaces();
    turnWriteSignalsIntoErrors();
    installCrashHandlers();

    try
    {
        // Hosting needs a message thread, which is this one; without an editor no display is opened.
        const juce::ScopedJuceInitialiser_GUI juceInitialiser;
        const auto exitCode = run (CommandLine::parse (toStrings (argc - 1, argv + 1)));
        throwIfOutputWasLost();
        return exitCode;
    }
    catch (const RenderError& error)
    {
        return printError (juce::CharPointer_UTF8 (error.what()), error.getExitCode());
    }
    catch (const std::exception& error)
    {
        return printError (juce::String ("can't go on: ") + error.what(), RenderError::failedExitCode);
    }
}
