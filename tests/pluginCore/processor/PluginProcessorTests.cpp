#include "processor/PluginProcessor.h"

#include "support/PresetSandbox.h"
#include "support/Signals.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::channelOf;
using cv::test::noise;
using cv::test::PresetSandbox;
using cv::test::TestProduct;
using cv::test::toBuffer;

class PluginProcessorTest : public testing::Test
{
protected:
    void prepare()
    {
        product.setRateAndBufferSizeDetails (48000.0, 256);
        product.prepareToPlay (48000.0, 256);
    }

    std::vector<float> bypass (const std::vector<float>& signal)
    {
        auto buffer = toBuffer ({ signal, signal });
        juce::MidiBuffer midi;
        product.processBlockBypassed (buffer, midi);
        return channelOf (buffer, 1);
    }

    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
};

TEST_F (PluginProcessorTest, VersionStringMarksABeta)
{
    EXPECT_EQ (product.getVersionString(), "2.3.4");

    product.beta = true;
    EXPECT_EQ (product.getVersionString(), "2.3.4 beta");

    product.betaNumber = 3;
    EXPECT_EQ (product.getVersionString(), "2.3.4 beta 3");

    product.beta = false;
    EXPECT_EQ (product.getVersionString(), "2.3.4");
}

TEST_F (PluginProcessorTest, VersionDisplayTextTellsNameFormatVersionAndDate)
{
    EXPECT_TRUE (product.getVersionDisplayText().startsWith ("Test Product - Undefined \n\nversion 2.3.4  ("));
    EXPECT_TRUE (product.getVersionDisplayText().endsWith (")"));

    product.beta = true;
    EXPECT_TRUE (
        product.getVersionDisplayText().startsWith ("Test Product - Undefined Beta \n\nversion 2.3.4 beta  ("));
}

TEST_F (PluginProcessorTest, ProgramHasANameUnderVst3Only)
{
    EXPECT_EQ (product.getNumPrograms(), 1);
    EXPECT_EQ (product.getProgramName (0), "");

    juce::AudioProcessor::setTypeOfNextNewPlugin (juce::AudioProcessor::wrapperType_VST3);
    TestProduct wrapped (sandbox.getLocations());
    juce::AudioProcessor::setTypeOfNextNewPlugin (juce::AudioProcessor::wrapperType_Undefined);

    EXPECT_EQ (wrapped.getProgramName (0), "Default");
    EXPECT_EQ (wrapped.getProgramName (1), "");
}

TEST_F (PluginProcessorTest, ProcessesWithDenormalsFlushed)
{
    prepare();
    EXPECT_EQ (product.preparedRate, 48000.0);

    auto buffer = toBuffer ({ { 0.25f }, { 0.5f } });
    juce::MidiBuffer midi;
    product.processBlock (buffer, midi);

    EXPECT_TRUE (product.denormalsWereFlushed);
    EXPECT_EQ (buffer.getSample (1, 0), 1.0f);
}

TEST_F (PluginProcessorTest, BypassWithoutLatencyLeavesTheSamplesUnchanged)
{
    prepare();
    const auto signal = noise (256, 1);
    EXPECT_EQ (bypass (signal), signal);
    EXPECT_EQ (bypass (signal), signal);
}

TEST_F (PluginProcessorTest, BypassBeforePrepareIsSilent)
{
    EXPECT_EQ (bypass (noise (256, 1)), cv::test::constant (256, 0.0f));
}

TEST_F (PluginProcessorTest, BlockBeforePrepareIsSilent)
{
    // Hosts may tell the rate long before they activate.
    product.setRateAndBufferSizeDetails (48000.0, 256);
    const auto signal = noise (256, 1);
    auto buffer = toBuffer ({ signal, signal });
    juce::MidiBuffer midi;
    product.processBlock (buffer, midi);
    EXPECT_EQ (channelOf (buffer, 1), cv::test::constant (256, 0.0f));

    // What no product can prepare for is no activation, but a later bad rate takes none back.
    product.prepareToPlay (0.0, 256);
    buffer = toBuffer ({ signal, signal });
    product.processBlock (buffer, midi);
    EXPECT_EQ (channelOf (buffer, 1), cv::test::constant (256, 0.0f));

    prepare();
    product.prepareToPlay (0.0, 256);
    buffer = toBuffer ({ signal, signal });
    product.processBlock (buffer, midi);
    EXPECT_EQ (channelOf (buffer, 1)[100], 2.0f * signal[100]);
}

TEST_F (PluginProcessorTest, BlockBeforePrepareStillTakesTheReset)
{
    product.restoreStateXml (juce::XmlElement ("TestProduct"), false);
    product.processOneBlock();
    EXPECT_EQ (product.numResets, 1);
}

TEST_F (PluginProcessorTest, BypassDelaysByTheReportedLatency)
{
    product.maximumLatency = 100;
    product.setLatencySamples (100);
    prepare();

    const auto output = bypass (cv::test::impulse (256));
    EXPECT_THAT (cv::test::positionsAbove (output, 0.0f), testing::ElementsAre (100));
}

TEST_F (PluginProcessorTest, BypassLimitsTheLatencyToItsLine)
{
    // A line holds at least two samples, whatever its capacity.
    product.setLatencySamples (50);
    prepare();
    EXPECT_THAT (cv::test::positionsAbove (bypass (cv::test::impulse (256)), 0.0f), testing::ElementsAre (2));

    product.setLatencySamples (-5);
    EXPECT_THAT (cv::test::positionsAbove (bypass (cv::test::impulse (256)), 0.0f), testing::ElementsAre (0));
}

TEST_F (PluginProcessorTest, SmallerMaximumLatencyKeepsTheLongerLine)
{
    product.maximumLatency = 100;
    prepare();
    product.maximumLatency = 10;
    product.setLatencySamples (80);
    prepare();

    EXPECT_THAT (cv::test::positionsAbove (bypass (cv::test::impulse (256)), 0.0f), testing::ElementsAre (80));
}
} // namespace
} // namespace cv::pluginCore
