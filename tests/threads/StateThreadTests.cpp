#include "support/MessageLoop.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <list>
#include <set>
#include <thread>

namespace cv::varlo
{
namespace
{
using cv::test::makeNoise;
using cv::test::ProcessorHarness;
using cv::test::runMessageLoopUntil;
using cv::test::TemporaryHome;

constexpr auto numStateCalls = 2000;

/** A project that remembers a preset of the user's and that the sound is the preset's. */
juce::MemoryBlock makeProject (const juce::String& presetName)
{
    juce::XmlElement xml ("Varlo");
    auto* parameters = xml.createNewChildElement ("PARAMS");

    for (const auto* id : { "mix", "delay" })
    {
        auto* parameter = parameters->createNewChildElement ("PARAM");
        parameter->setAttribute ("id", id);
        parameter->setAttribute ("value", 50);
    }

    auto* lastPreset = xml.createNewChildElement ("lastPreset");
    lastPreset->setAttribute ("root", "USER");
    lastPreset->setAttribute ("path", presetName);
    lastPreset->setAttribute ("dirty", 0);

    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (xml, chunk);
    return chunk;
}

/** Hands everything over, as a listener that the audio thread may call has to. */
class QuietListener final : public pluginCore::PresetsManager::Listener
{
public:
    explicit QuietListener (pluginCore::PresetsManager& store) : presets (store) { presets.addListener (this); }

    ~QuietListener() override { presets.removeListener (this); }

    std::atomic<int> numDirty { 0 };
    std::atomic<int> numClean { 0 };

private:
    void presetLoaded (pluginCore::PresetsManager&, const juce::File&) override {}

    void dirtyStateChanged (pluginCore::PresetsManager&, bool newDirty) override { ++(newDirty ? numDirty : numClean); }

    pluginCore::PresetsManager& presets;
};

class StateThreadTest : public testing::Test
{
protected:
    StateThreadTest()
    {
        harness.prepare (44100.0, 64);
        audioThread = std::thread ([this] { play(); });
    }

    ~StateThreadTest() override
    {
        stop = true;
        audioThread.join();
    }

    /** Plays noise, a block after the other, and moves parameters before each block as hosts do. */
    void play()
    {
        juce::Random random (1);
        auto buffer = makeNoise (2, 64, 0.5f);
        juce::MidiBuffer midi;

        while (! stop)
        {
            auto& parameter = *harness.processor.getParameters()[random.nextInt (6)];
            parameter.setValueNotifyingHost (random.nextFloat());

            buffer.setSample (0, 0, 0.5f);
            harness.processor.processBlock (buffer, midi);
            loudest = juce::jmax (loudest.load(), buffer.getMagnitude (0, 64));
            ++numBlocks;
        }
    }

    /** Runs the work on a thread of the host's while this one, the message thread, goes on. */
    void onHostThread (const std::function<void()>& work)
    {
        std::atomic<bool> done { false };
        std::thread thread (
            [&]
            {
                work();
                done = true;
            });

        EXPECT_TRUE (runMessageLoopUntil (
            [&]
            {
                // What an editor would show meanwhile.
                names.insert (harness.processor.getPresetsManager().getCurrentPresetFile().getFileName().toStdString());
                return done.load();
            },
            120000));
        thread.join();
    }

    const TemporaryHome home;
    ProcessorHarness harness;
    QuietListener listener { harness.processor.getPresetsManager() };
    std::set<std::string> names;
    std::atomic<bool> stop { false };
    std::atomic<float> loudest { 0.0f };
    std::atomic<int> numBlocks { 0 };
    std::thread audioThread;
};

TEST_F (StateThreadTest, ProjectsAreSavedWhileAudioRuns)
{
    auto numUnreadable = 0;

    onHostThread (
        [&]
        {
            for (auto i = 0; i < numStateCalls; ++i)
            {
                juce::MemoryBlock chunk;
                harness.processor.getStateInformation (chunk);
                const auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
                const auto isWhole = xml != nullptr && xml->getChildByName ("PARAMS")->getNumChildElements() == 6;
                numUnreadable += isWhole ? 0 : 1;
            }
        });

    EXPECT_EQ (numUnreadable, 0);
    EXPECT_GT (numBlocks, 0);
}

TEST_F (StateThreadTest, ProjectsAreOpenedWhileAudioRuns)
{
    const juce::MemoryBlock projects[] { makeProject ("0.cvpreset"), makeProject ("1.cvpreset") };

    onHostThread (
        [&]
        {
            for (auto i = 0; i < numStateCalls; ++i)
                harness.processor.setStateInformation (projects[i % 2].getData(), (int) projects[i % 2].getSize());
        });

    for (auto* parameter : harness.processor.getParameters())
        EXPECT_TRUE (parameter->getValue() >= 0.0f && parameter->getValue() <= 1.0f);

    EXPECT_THAT (names, testing::IsSubsetOf ({ "", "0.cvpreset", "1.cvpreset" }));
    EXPECT_GT (listener.numDirty, 0);
    EXPECT_GT (listener.numClean, 0);
    EXPECT_LE (loudest, 4.0f);
}

TEST_F (StateThreadTest, PresetsAreLoadedWhileProjectsAreOpened)
{
    auto& presets = harness.processor.getPresetsManager();
    const auto preset = presets.getLocations().userFolder.getChildFile ("a.cvpreset");
    presets.savePreset (preset, false);
    const auto project = makeProject ("0.cvpreset");
    std::atomic<bool> done { false };

    std::thread hostThread (
        [&]
        {
            for (auto i = 0; i < numStateCalls / 4; ++i)
                harness.processor.setStateInformation (project.getData(), (int) project.getSize());

            done = true;
        });

    while (! done)
    {
        presets.loadPreset (preset);
        presets.savePreset (preset, false);
    }

    hostThread.join();
    EXPECT_THAT (presets.getCurrentPresetFile().getFileName().toStdString(),
                 testing::AnyOf ("a.cvpreset", "0.cvpreset"));
}

TEST_F (StateThreadTest, ListenersComeAndGoWhileTheMarkChanges)
{
    auto& presets = harness.processor.getPresetsManager();
    std::atomic<bool> done { false };

    std::thread hostThread (
        [&]
        {
            for (auto i = 0; ! done; ++i)
                presets.setDirty (i % 2 == 0);
        });

    while (listener.numDirty == 0 || listener.numClean == 0)
        std::this_thread::yield();

    for (auto i = 0; i < numStateCalls; ++i)
    {
        // So many that the list has to move when it grows. A change that another thread doesn't expect, the thread
        // sanitizer sees, or JUCE's assertion.
        std::list<QuietListener> bars;

        for (auto j = 0; j < 10; ++j)
            bars.emplace_back (presets);
    }

    done = true;
    hostThread.join();
}

TEST_F (StateThreadTest, EditorSizeIsSavedWhileItChanges)
{
    std::atomic<bool> done { false };
    std::thread hostThread (
        [&]
        {
            for (auto i = 0; i < numStateCalls; ++i)
                harness.processor.createStateXml (true);

            done = true;
        });

    for (auto size = 1; ! done; size = size % 2000 + 1)
        harness.processor.setEditorSize (size, size);

    hostThread.join();
    EXPECT_GT (harness.processor.getEditorWidth(), 0);
}
} // namespace
} // namespace cv::varlo
