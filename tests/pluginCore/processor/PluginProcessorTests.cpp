#include "pluginCore/processor/PluginProcessor.h"

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

TEST_F (PluginProcessorTest, LargerMaximumLatencyMakesALongerLine)
{
    product.maximumLatency = 10;
    prepare();
    product.maximumLatency = 100;
    product.setLatencySamples (100);
    prepare();

    EXPECT_THAT (cv::test::positionsAbove (bypass (cv::test::impulse (256)), 0.0f), testing::ElementsAre (100));
}

TEST_F (PluginProcessorTest, BadRateMakesTheBypassLineAllTheSame)
{
    for (const auto rate : { 0.0, -1.0 })
    {
        TestProduct another (sandbox.getLocations());
        another.maximumLatency = 100;
        another.setLatencySamples (100);
        another.prepareToPlay (rate, 256);

        const auto signal = cv::test::impulse (256);
        auto buffer = toBuffer ({ signal, signal });
        juce::MidiBuffer midi;
        another.processBlockBypassed (buffer, midi);
        EXPECT_THAT (cv::test::positionsAbove (channelOf (buffer, 1), 0.0f), testing::ElementsAre (100)) << rate;
    }
}

/** An action that does nothing but take up room in the history. */
class Weight final : public juce::UndoableAction
{
public:
    explicit Weight (int sizeInUnits) : units (sizeInUnits) {}

    bool perform() override { return true; }

    bool undo() override { return true; }

    int getSizeInUnits() override { return units; }

private:
    const int units;
};

TEST_F (PluginProcessorTest, UndoHistoryKeepsThirtyThousandUnitsAndThirtyTransactionsAtLeast)
{
    auto& manager = product.getUndoManager();
    const auto countAfter = [&] (int numTransactions, int unitsOfEach)
    {
        manager.clearUndoHistory();

        for (auto i = 0; i < numTransactions; ++i)
        {
            manager.beginNewTransaction();
            manager.perform (new Weight (unitsOfEach));
        }

        auto count = 0;

        while (manager.undo())
            ++count;

        return count;
    };

    EXPECT_EQ (countAfter (100, 100), 100);
    EXPECT_EQ (countAfter (100, 500), 60) << "as many as make up 30000 units";
    EXPECT_EQ (countAfter (100, 10000), 30) << "however large they are";
}
} // namespace
} // namespace cv::pluginCore
