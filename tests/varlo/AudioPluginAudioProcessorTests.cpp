#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::constant;
using cv::test::FakePlayHead;
using cv::test::firstDifference;
using cv::test::noise;
using cv::test::ProcessorHarness;
using cv::test::toBuffer;

constexpr int oneSecond = 44100;

bool accepts (const juce::AudioChannelSet& input, const juce::AudioChannelSet& output)
{
    juce::AudioProcessor::BusesLayout layout;
    layout.inputBuses.add (input);
    layout.outputBuses.add (output);
    return ProcessorHarness().processor.checkBusesLayoutSupported (layout);
}

TEST (AudioPluginAudioProcessor, AnswersTheHostAboutItself)
{
    ProcessorHarness harness;
    auto& processor = harness.processor;

    EXPECT_EQ (processor.getName(), "Varlo");
    EXPECT_EQ (processor.getTailLengthSeconds(), 300.0);
    EXPECT_EQ (processor.getLatencySamples(), 0);
    EXPECT_TRUE (processor.acceptsMidi());
    EXPECT_FALSE (processor.producesMidi());
    EXPECT_FALSE (processor.isMidiEffect());
    EXPECT_FALSE (processor.supportsDoublePrecisionProcessing());
    EXPECT_EQ (processor.getBypassParameter(), nullptr);
    EXPECT_TRUE (processor.hasEditor());
}

TEST (AudioPluginAudioProcessor, HasOneProgramWithoutAName)
{
    ProcessorHarness harness;
    auto& processor = harness.processor;
    processor.setCurrentProgram (1);
    processor.changeProgramName (0, "ignored");

    EXPECT_EQ (processor.getNumPrograms(), 1);
    EXPECT_EQ (processor.getCurrentProgram(), 0);
    EXPECT_EQ (processor.getProgramName (0), "");
}

TEST (AudioPluginAudioProcessor, KnowsItsVersionAndAddresses)
{
    ProcessorHarness harness;
    const auto& processor = harness.processor;

    EXPECT_EQ (processor.getVersionString(), "1.0.0");
    EXPECT_EQ (processor.getReleaseYear(), 2025);
    EXPECT_EQ (harness.processor.getPresetsManager().getCompanyName(), "Corvane");
    EXPECT_EQ (processor.getExtraVersionText(), "");
    EXPECT_FALSE (processor.isBetaBuild());
    EXPECT_EQ (processor.getBetaNumber(), 0);
    EXPECT_TRUE (juce::URL (processor.getReleaseNotesUrl()).isWellFormed());
    EXPECT_EQ (juce::URL (processor.getReleaseNotesUrl()).getSubPath(), "releaseNotes/varlo");
    EXPECT_EQ (juce::URL (processor.getProductUrl()).getSubPath(), "product/varlo");
    EXPECT_EQ (juce::URL (processor.getProductUrl()).getDomain(),
               juce::URL (processor.getReleaseNotesUrl()).getDomain());
}

TEST (AudioPluginAudioProcessor, VersionTextNamesTheFormatAndX64)
{
    using Processor = juce::AudioProcessor;
    juce::String processorName;

#if JUCE_INTEL && JUCE_64BIT
    processorName = " (x64)";
#endif

    for (const auto& [wrapper, name] :
         { std::pair (Processor::wrapperType_VST3, "VST3"), std::pair (Processor::wrapperType_LV2, "LV2"),
           std::pair (Processor::wrapperType_Standalone, "Standalone") })
    {
        Processor::setTypeOfNextNewPlugin (wrapper);
        ProcessorHarness harness;
        Processor::setTypeOfNextNewPlugin (Processor::wrapperType_Undefined);
        EXPECT_EQ (harness.processor.getVersionDisplayText(), "v1.0.0 - " + juce::String (name) + processorName);
    }
}

TEST (AudioPluginAudioProcessor, HasOneBusEachWayStereoByDefault)
{
    const AudioPluginAudioProcessor processor;

    for (const auto isInput : { true, false })
    {
        ASSERT_EQ (processor.getBusCount (isInput), 1);
        const auto* bus = processor.getBus (isInput, 0);
        EXPECT_EQ (bus->getName(), isInput ? "Input" : "Output");
        EXPECT_EQ (bus->getDefaultLayout(), juce::AudioChannelSet::stereo());
        EXPECT_TRUE (bus->isEnabledByDefault());
    }
}

TEST (AudioPluginAudioProcessor, AcceptsMonoAndStereoWithEqualSides)
{
    const auto mono = juce::AudioChannelSet::mono();
    const auto stereo = juce::AudioChannelSet::stereo();
    const auto quad = juce::AudioChannelSet::quadraphonic();

    EXPECT_TRUE (accepts (mono, mono));
    EXPECT_TRUE (accepts (stereo, stereo));
    EXPECT_FALSE (accepts (mono, stereo));
    EXPECT_FALSE (accepts (stereo, mono));
    EXPECT_FALSE (accepts (quad, quad));
    EXPECT_FALSE (accepts (juce::AudioChannelSet::disabled(), stereo));
    EXPECT_FALSE (accepts (juce::AudioChannelSet::disabled(), juce::AudioChannelSet::disabled()));
}

TEST (AudioPluginAudioProcessor, RateThatIsNotAboveZeroClearsTheBlock)
{
    ProcessorHarness harness;
    const auto input = toBuffer ({ noise (512, 1), noise (512, 2) });

    EXPECT_EQ (harness.render (input).getMagnitude (0, 512), 0.0f); // never prepared

    harness.prepare (44100.0);
    EXPECT_GT (harness.render (input).getMagnitude (0, 512), 0.1f);

    harness.processor.setRateAndBufferSizeDetails (0.0, 512);
    EXPECT_EQ (harness.render (input).getMagnitude (0, 512), 0.0f);
}

TEST (AudioPluginAudioProcessor, BlockBeforeActivationIsCleared)
{
    ProcessorHarness harness;
    const auto input = toBuffer ({ noise (512, 1), noise (512, 2) });

    harness.processor.setRateAndBufferSizeDetails (44100.0, 512);
    EXPECT_EQ (harness.render (input).getMagnitude (0, 512), 0.0f);

    harness.processor.prepareToPlay (0.0, 512);
    EXPECT_EQ (harness.render (input).getMagnitude (0, 512), 0.0f);

    harness.processor.prepareToPlay (44100.0, 512);
    EXPECT_GT (harness.render (input).getMagnitude (0, 512), 0.1f);
}

/** Gives a processor a layout that it refuses, past JUCE's question for it. */
void forceLayout (juce::AudioProcessor& processor, int numInputs, int numOutputs)
{
    struct Access : juce::AudioProcessor
    {
        using AudioProcessor::applyBusLayouts;
    };

    juce::AudioProcessor::BusesLayout layout;
    layout.inputBuses.add (juce::AudioChannelSet::canonicalChannelSet (numInputs));
    layout.outputBuses.add (juce::AudioChannelSet::canonicalChannelSet (numOutputs));
    ASSERT_TRUE ((processor.*&Access::applyBusLayouts) (layout));
}

TEST (AudioPluginAudioProcessor, WithoutChannelsOneWayClearsTheBlock)
{
    for (const auto& [numInputs, numOutputs] : { std::pair (0, 2), std::pair (2, 0), std::pair (0, 0) })
    {
        ProcessorHarness harness;
        harness.prepare();
        forceLayout (harness.processor, numInputs, numOutputs);
        ASSERT_EQ (harness.processor.getTotalNumInputChannels(), numInputs);
        ASSERT_EQ (harness.processor.getTotalNumOutputChannels(), numOutputs);

        const auto input = toBuffer ({ noise (512, 1), noise (512, 2) });
        EXPECT_EQ (harness.render (input).getMagnitude (0, 512), 0.0f) << numInputs << ' ' << numOutputs;
    }
}

TEST (AudioPluginAudioProcessor, PassesTheDrySignalOfAThirdChannel)
{
    ProcessorHarness harness;
    harness.set ("mix", 0.0f);
    harness.prepare();

    juce::AudioBuffer<float> input (3, 512);

    for (auto channel = 0; channel < 3; ++channel)
        input.copyFrom (channel, 0, noise (512, channel).data(), 512);

    const auto output = harness.render (input);

    for (auto channel = 0; channel < 3; ++channel)
        EXPECT_EQ (firstDifference (channelOf (output, channel), channelOf (input, channel)), -1) << channel;
}

TEST (AudioPluginAudioProcessor, PrepareWithABadRateLeavesTheSoundAsItWas)
{
    ProcessorHarness disturbed;
    ProcessorHarness calm;
    const auto input = toBuffer ({ noise (oneSecond, 3), noise (oneSecond, 4) });

    for (auto* harness : { &disturbed, &calm })
    {
        harness->set ("delay", 100.0f);
        harness->prepare();
        harness->render (input);
    }

    disturbed.processor.prepareToPlay (-1.0, 512);

    const auto silence = toBuffer ({ constant (oneSecond, 0.0f), constant (oneSecond, 0.0f) });
    const auto output = disturbed.render (silence);
    EXPECT_GT (output.getMagnitude (0, oneSecond), 0.1f);
    EXPECT_EQ (firstDifference (channelOf (output, 0), channelOf (calm.render (silence), 0)), -1);
}

TEST (AudioPluginAudioProcessor, BlockOfZeroSamplesChangesNothing)
{
    ProcessorHarness withEmptyBlocks;
    ProcessorHarness plain;
    withEmptyBlocks.prepare();
    plain.prepare();

    const auto input = toBuffer ({ noise (2 * oneSecond, 5), noise (2 * oneSecond, 6) });
    int call = 0;
    const auto output = withEmptyBlocks.render (input, [&call] { return ++call % 2 == 0 ? 0 : 512; });
    EXPECT_EQ (firstDifference (channelOf (output, 1), channelOf (plain.render (input), 1)), -1);
}

TEST (AudioPluginAudioProcessor, EchoesSurviveStopResetAndReleaseResources)
{
    ProcessorHarness harness;
    harness.set ("delay", 500.0f);
    harness.prepare();
    harness.render (toBuffer ({ noise (oneSecond / 2, 7), noise (oneSecond / 2, 8) }));

    harness.processor.reset();
    harness.processor.releaseResources();

    const auto tail = harness.render (toBuffer ({ constant (512, 0.0f), constant (512, 0.0f) }));
    EXPECT_GT (tail.getMagnitude (0, 512), 0.05f);
}

TEST (AudioPluginAudioProcessor, EchoesRestWhileBypassedAndGoOnAfterwards)
{
    ProcessorHarness interrupted;
    ProcessorHarness plain;
    interrupted.prepare();
    plain.prepare();

    const auto input = toBuffer ({ noise (oneSecond, 13), noise (oneSecond, 14) });
    interrupted.render (input);
    plain.render (input);

    auto bypassed = input;
    juce::MidiBuffer midi;
    interrupted.processor.processBlockBypassed (bypassed, midi);
    EXPECT_EQ (firstDifference (channelOf (bypassed, 0), channelOf (input, 0)), -1);

    const auto silence = toBuffer ({ constant (oneSecond, 0.0f), constant (oneSecond, 0.0f) });
    const auto echoes = interrupted.render (silence);
    EXPECT_GT (echoes.getMagnitude (0, oneSecond), 0.1f);
    EXPECT_EQ (firstDifference (channelOf (echoes, 0), channelOf (plain.render (silence), 0)), -1);
}

TEST (AudioPluginAudioProcessor, StateCallsLeaveTheSoundAlone)
{
    ProcessorHarness disturbed;
    ProcessorHarness calm;
    disturbed.prepare();
    calm.prepare();
    const auto input = toBuffer ({ noise (oneSecond, 9), noise (oneSecond, 10) });

    for (int i = 0; i < 2; ++i)
    {
        const auto output = disturbed.render (input);
        EXPECT_EQ (firstDifference (channelOf (output, 0), channelOf (calm.render (input), 0)), -1);

        juce::MemoryBlock state;
        disturbed.processor.getStateInformation (state);
        disturbed.processor.setStateInformation (state.getData(), (int) state.getSize());
        disturbed.processor.setStateInformation ("junk", 4);
    }
}

TEST (AudioPluginAudioProcessor, TransportJumpSilencesTheEchoes)
{
    ProcessorHarness harness;
    harness.set ("delay", 200.0f);
    harness.set ("feedback", 0.0f);
    harness.set ("mix", 100.0f);
    harness.prepare();
    harness.playHead.position = FakePlayHead::playingAt (0);
    harness.render (toBuffer ({ noise (512, 11), noise (512, 12) }));

    const auto silence = toBuffer ({ constant (512, 0.0f), constant (512, 0.0f) });
    const auto playOneSecondFrom = [&] (juce::int64 time)
    {
        auto loudest = 0.0f;

        for (int block = 0; block < oneSecond / 512; ++block, time += 512)
        {
            harness.playHead.position = FakePlayHead::playingAt (time);
            loudest = juce::jmax (loudest, harness.render (silence).getMagnitude (0, 512));
        }

        return loudest;
    };

    EXPECT_GT (playOneSecondFrom (512), 0.05f);
    EXPECT_EQ (playOneSecondFrom (10 * oneSecond), 0.0f);
}

TEST (AudioPluginAudioProcessor, MakesAndDeletesItsEditor)
{
    ProcessorHarness harness;
    std::unique_ptr<juce::AudioProcessorEditor> editor (harness.processor.createEditorIfNeeded());
    ASSERT_NE (editor, nullptr);
    EXPECT_GT (editor->getWidth(), 0);
    harness.processor.editorBeingDeleted (editor.get());
}

TEST (AudioPluginAudioProcessor, AnalysisThreadRunsFromConstructionAndHearsOfTheRate)
{
    AudioPluginAudioProcessor processor;
    auto& fftProcessor = processor.getFFTProcessor();
    EXPECT_TRUE (fftProcessor.isThreadRunning());
    EXPECT_EQ (fftProcessor.sampleRate.load(), 44100.0);

    processor.prepareToPlay (48000.0, 512);
    EXPECT_EQ (fftProcessor.sampleRate.load(), 48000.0);

    processor.prepareToPlay (0.0, 512);
    EXPECT_EQ (fftProcessor.sampleRate.load(), 48000.0);
}

TEST (AudioPluginAudioProcessor, EndsWhileItsAnalysisThreadWaits)
{
    auto processor = std::make_unique<AudioPluginAudioProcessor>();
    processor->prepareToPlay (48000.0, 512);
    juce::Thread::sleep (20); // time to start waiting

    // A thread that isn't woken never ends; how long one that is takes depends on what else the machine does.
    constexpr auto limitMilliseconds = 5000.0;
    const auto start = juce::Time::getMillisecondCounterHiRes();
    processor.reset();
    EXPECT_LT (juce::Time::getMillisecondCounterHiRes() - start, limitMilliseconds);
}

TEST (AudioPluginAudioProcessor, RunsOnAHundredInstances)
{
    std::vector<std::unique_ptr<AudioPluginAudioProcessor>> instances;

    for (int i = 0; i < 100; ++i)
        instances.push_back (std::make_unique<AudioPluginAudioProcessor>());

    EXPECT_EQ (instances.back()->getName(), "Varlo");
}

TEST (AudioPluginAudioProcessor, PrepareWithABadRateLeavesTheLengthOfAJump)
{
    ProcessorHarness harness;
    harness.set ("delay", 200.0f);
    harness.set ("feedback", 0.0f);
    harness.set ("mix", 100.0f);
    harness.prepare (oneSecond, 512);
    harness.playHead.position = FakePlayHead::playingAt (0);
    harness.render (toBuffer ({ noise (512, 11), noise (512, 12) }));

    // A jump for blocks of 512 samples, none for blocks of 8192.
    harness.processor.prepareToPlay (0.0, 8192);
    harness.playHead.position = FakePlayHead::playingAt (10000);

    const auto silence = toBuffer ({ constant (oneSecond / 2, 0.0f), constant (oneSecond / 2, 0.0f) });
    EXPECT_EQ (harness.render (silence).getMagnitude (0, oneSecond / 2), 0.0f);
}
} // namespace
} // namespace cv::varlo
