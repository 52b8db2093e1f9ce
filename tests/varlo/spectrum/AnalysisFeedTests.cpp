#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::constant;
using cv::test::firstDifference;
using cv::test::makeNoise;
using cv::test::noise;
using cv::test::ProcessorHarness;
using cv::test::sine;
using cv::test::toBuffer;

/** A processor whose analysis thread has ended, so that what it was fed with stays to be looked at. */
class AnalysisFeed : public testing::Test
{
protected:
    void prepare (int numChannels)
    {
        harness = std::make_unique<ProcessorHarness> (numChannels);
        harness->prepare();
        ASSERT_TRUE (fftProcessor().stopThread (10000));
    }

    FFTProcessor& fftProcessor() { return harness->processor.getFFTProcessor(); }

    std::vector<float> takeFed()
    {
        auto& fifo = fftProcessor().audioFifo;
        std::vector<float> samples ((size_t) fifo.getNumReady());
        EXPECT_TRUE (fifo.pop (samples.data(), (int) samples.size()));
        return samples;
    }

    std::unique_ptr<ProcessorHarness> harness;
};

TEST_F (AnalysisFeed, IsTheMeanOfAStereoOutput)
{
    prepare (2);
    const auto output = harness->render (makeNoise (2, 5000, 1.0f), 512);
    const auto left = channelOf (output, 0);
    const auto right = channelOf (output, 1);
    std::vector<float> mean (left.size());

    for (size_t i = 0; i < mean.size(); ++i)
        mean[i] = (left[i] + right[i]) * 0.5f;

    EXPECT_EQ (firstDifference (takeFed(), mean), -1);
}

TEST_F (AnalysisFeed, IsAMonoOutputAsItIs)
{
    prepare (1);
    const auto output = harness->render (makeNoise (1, 5000, 1.0f), 512);
    EXPECT_EQ (firstDifference (takeFed(), channelOf (output, 0)), -1);
}

TEST_F (AnalysisFeed, IsTheOutputBehindItsGuard)
{
    for (const auto numChannels : { 1, 2 })
    {
        prepare (numChannels);
        harness->set ("mix", 0.0f);
        harness->prepare();
        std::vector<float> loud (100, 10.0f);
        loud[50] = std::numeric_limits<float>::quiet_NaN();
        harness->render (toBuffer (std::vector ((size_t) numChannels, loud)));

        auto guarded = constant (100, 4.0f);
        guarded[50] = 0.0f;
        EXPECT_EQ (takeFed(), guarded);
    }
}

TEST_F (AnalysisFeed, BlockFlaggedAsClearIsFedWithItsEchoes)
{
    prepare (2);
    harness->set ("delay", 100.0f);
    harness->prepare();
    harness->render (makeNoise (2, 8820, 1.0f));
    takeFed();

    auto buffer = cv::test::makeSilence (2, 512);
    ASSERT_TRUE (buffer.hasBeenCleared());
    juce::MidiBuffer midi;
    harness->processor.processBlock (buffer, midi);

    const auto fed = takeFed();
    ASSERT_EQ (fed.size(), 512u);
    EXPECT_GT (cv::test::peak (fed, 0, fed.size()), 0.01f);
    EXPECT_EQ (fed[100], (buffer.getSample (0, 100) + buffer.getSample (1, 100)) * 0.5f);
}

TEST_F (AnalysisFeed, GoesOnAtMixZero)
{
    prepare (2);
    harness->set ("mix", 0.0f);
    harness->render (makeNoise (2, 1000, 1.0f));
    EXPECT_EQ (takeFed().size(), 1000u);
}

TEST_F (AnalysisFeed, EmptyBlockFeedsNothing)
{
    prepare (2);
    juce::AudioBuffer<float> empty (2, 0);
    juce::MidiBuffer midi;
    harness->processor.processBlock (empty, midi);
    EXPECT_EQ (fftProcessor().audioFifo.getNumReady(), 0);
}

TEST_F (AnalysisFeed, BlockWithoutChannelsFeedsNothing)
{
    prepare (2);
    juce::AudioBuffer<float> empty (0, 512);
    juce::MidiBuffer midi;
    harness->processor.processBlock (empty, midi);
    EXPECT_EQ (fftProcessor().audioFifo.getNumReady(), 0);
}

TEST_F (AnalysisFeed, RestsWhileBypassedAndWithoutARate)
{
    prepare (2);
    auto buffer = makeNoise (2, 600, 1.0f);
    juce::MidiBuffer midi;
    harness->processor.processBlockBypassed (buffer, midi);
    EXPECT_EQ (fftProcessor().audioFifo.getNumReady(), 0);

    harness->processor.setRateAndBufferSizeDetails (0.0, 512);
    harness->processor.processBlock (buffer, midi);
    EXPECT_EQ (fftProcessor().audioFifo.getNumReady(), 0);
}

TEST_F (AnalysisFeed, LongerBlockThanTheQueueLeavesItsNewestSamples)
{
    prepare (1);
    const auto output = channelOf (harness->render (makeNoise (1, 20000, 1.0f), 20000), 0);
    EXPECT_EQ (firstDifference (takeFed(), { output.end() - 16383, output.end() }), -1);
}

/** The whole path: sines of two bins through a running plug-in, and their height in its last frame. */
TEST (Analysis, SinesShowInTheirBins)
{
    ProcessorHarness harness;
    harness.set ("mix", 0.0f);
    harness.prepare();
    auto& fftProcessor = harness.processor.getFFTProcessor();
    const auto input = toBuffer ({ sine (8 * 512, 100.0, 1024.0, 1.0f), sine (8 * 512, 200.0, 1024.0, 0.5f) });

    harness.render (input, 256);
    const auto start = juce::Time::getMillisecondCounter();

    while (fftProcessor.spectrumFifo.getNumReady() < 8 * FFTProcessor::numBins)
    {
        ASSERT_LT (juce::Time::getMillisecondCounter() - start, 20000u);
        juce::Thread::sleep (1);
    }

    std::vector<float> frame ((size_t) FFTProcessor::numBins);

    while (fftProcessor.spectrumFifo.pop (frame.data(), FFTProcessor::numBins))
    {
    }

    EXPECT_NEAR (frame[100], 0.5f, 0.005f);
    EXPECT_NEAR (frame[200], 0.25f, 0.0025f);
    EXPECT_LT (frame[150], 0.0001f);
}
} // namespace
} // namespace cv::varlo
