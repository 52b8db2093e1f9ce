#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

#include "pictures/Picture.h"
#include "support/DisplayAtoms.h"
#include "support/FindComponent.h"
#include "support/MessageLoop.h"
#include "support/ProcessorHarness.h"
#include "support/SystemLanguage.h"
#include "support/TemporaryHome.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <cstdlib>
#include <iostream>

namespace cv::test
{
namespace
{
constexpr double sampleRate = 44100.0;
constexpr int samplesPerBlock = 512;

/** The demo's first five seconds in two channels; silence where it is shorter. Ends the program without it. */
juce::AudioBuffer<float> readDemo()
{
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    const juce::File file (VARLO_DEMO);
    const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file));

    if (reader == nullptr)
    {
        std::cerr << "varlo_editor_pictures: can't read " << file.getFullPathName() << std::endl;
        std::exit (1);
    }

    // The reader fills what lies behind its end with silence.
    juce::AudioBuffer<float> sound (2, (int) (5.0 * sampleRate));
    reader->read (&sound, 0, sound.getNumSamples(), 0, true, true);
    return sound;
}

/** Plays the sound through the processor, while the spectrogram draws what comes out. */
void play (ProcessorHarness& harness, varlo::SpectrogramComponent& spectrogram, const juce::AudioBuffer<float>& sound)
{
    auto& frames = harness.processor.getFFTProcessor().spectrumFifo;

    for (auto start = 0; start + samplesPerBlock <= sound.getNumSamples(); start += samplesPerBlock)
    {
        juce::AudioBuffer<float> block (2, samplesPerBlock);

        for (auto channel = 0; channel < 2; ++channel)
            block.copyFrom (channel, 0, sound, channel, start, samplesPerBlock);

        harness.render (block);

        while (frames.getNumReady() < varlo::FFTProcessor::numBins)
            juce::Thread::yield();

        spectrogram.timerCallback();
    }
}

/** Draws the editor in one language: in three sizes, with its menu open and with the about panel. */
bool writePictures (const juce::File& folder, const juce::String& language)
{
    const TemporaryHome home;
    const SystemLanguage systemLanguage (language.toStdString());
    ProcessorHarness harness;
    auto& presets = harness.processor.getPresetsManager();
    harness.processor.getGlobalSettings().getValues().setProperty ("checkForUpdates", "0", nullptr);
    harness.set ("delay", 250.0f);
    harness.set ("feedback", 70.0f);
    harness.set ("degrade", 10.0f);
    harness.prepare (sampleRate, samplesPerBlock);

    const auto userFolder = presets.getLocations().userFolder;
    userFolder.getChildFile ("Dub").createDirectory();
    presets.savePreset (userFolder.getChildFile ("Dub/Echo Chamber.cvpreset"), true);
    presets.savePreset (userFolder.getChildFile ("Quarter Notes.cvpreset"), true);
    presets.savePreset (userFolder.getChildFile ("Slapback.cvpreset"), true);
    harness.set ("resonance", 20.0f);

    const std::unique_ptr<juce::AudioProcessorEditor> editor (harness.processor.createEditorIfNeeded());
    editor->addToDesktop (0);
    editor->setVisible (true);
    play (harness, *findComponent<varlo::SpectrogramComponent> (*editor), readDemo());

    const auto write = [&] (const juce::String& what)
    { return writePicture (*editor, folder.getChildFile ("editor-" + language + "-" + what + ".png")); };

    auto isWritten = true;

    for (const auto width : { 525, 1050, 2100 })
    {
        editor->setSize (width, juce::roundToInt (width / 1.818));
        runMessageLoopFor (100);
        isWritten = isWritten && write (juce::String (width));
    }

    editor->setSize (1050, 578);
    findComponent<juce::TextButton> (*editor, [] (auto& button) { return button.getName() == "Presets..."; })
        ->triggerClick();
    runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() != nullptr; });
    isWritten = isWritten && write ("menu");
    juce::PopupMenu::dismissAllActiveMenus();
    runMessageLoopFor (300);

    findComponent<varlo::AboutComponent> (*editor)->setVisible (true);
    isWritten = isWritten && write ("about");

    harness.processor.editorBeingDeleted (editor.get());
    return isWritten;
}
} // namespace
} // namespace cv::test

int main (int argc, char** argv)
{
    const cv::test::DisplayAtoms displayAtoms;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;

    if (argc != 2)
    {
        std::cerr << "usage: varlo_editor_pictures FOLDER" << std::endl;
        return 2;
    }

    const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argv[1]));

    for (const auto& language : cv::pluginCore::LocalisedStringsManager::getLanguages())
    {
        if (! folder.isDirectory() || ! cv::test::writePictures (folder, language.code))
        {
            std::cerr << "varlo_editor_pictures: can't write into " << folder.getFullPathName() << std::endl;
            return 1;
        }
    }

    return 0;
}
