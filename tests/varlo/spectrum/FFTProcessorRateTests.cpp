#include "support/MessageLoop.h"
#include "varlo/spectrum/FFTProcessor.h"

#include <gmock/gmock.h>

#include <cmath>
#include <optional>
#include <thread>
#include <vector>

namespace cv::varlo
{
namespace
{
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using testing::ElementsAre;

TEST (FFTProcessorRate, AnotherIsToldOnTheMessageThread)
{
    FFTProcessor processor;
    std::vector<double> told;
    auto onMessageThread = false;
    processor.onSampleRateChanged = [&] (double rate)
    {
        told.push_back (rate);
        onMessageThread = juce::MessageManager::existsAndIsCurrentThread();
    };

    std::thread ([&] { processor.prepareToPlay (96000.0); }).join();
    EXPECT_EQ (processor.sampleRate.load(), 96000.0);
    EXPECT_THAT (told, testing::IsEmpty());

    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! told.empty(); }));
    EXPECT_THAT (told, ElementsAre (96000.0));
    EXPECT_TRUE (onMessageThread);
}

TEST (FFTProcessorRate, TheSameIsNotTold)
{
    FFTProcessor processor;
    auto numCalls = 0;
    processor.onSampleRateChanged = [&] (double) { ++numCalls; };

    processor.prepareToPlay (44100.0);
    processor.prepareToPlay (std::nextafter (44100.0, 50000.0));
    runMessageLoopFor (20);
    EXPECT_EQ (numCalls, 0);
    EXPECT_EQ (processor.sampleRate.load(), 44100.0);

    processor.prepareToPlay (48000.0);
    processor.prepareToPlay (48000.0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return numCalls > 0; }));
    runMessageLoopFor (20);
    EXPECT_EQ (numCalls, 1);
}

TEST (FFTProcessorRate, IsToldAsItStandsWhenTheMessageArrives)
{
    FFTProcessor processor;
    std::vector<double> told;
    processor.onSampleRateChanged = [&] (double rate) { told.push_back (rate); };

    processor.prepareToPlay (48000.0);
    processor.prepareToPlay (96000.0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return told.size() == 2; }));
    EXPECT_THAT (told, ElementsAre (96000.0, 96000.0));
}

TEST (FFTProcessorRate, IsKeptWithoutAListener)
{
    FFTProcessor processor;
    processor.prepareToPlay (48000.0);
    runMessageLoopFor (20);
    EXPECT_EQ (processor.sampleRate.load(), 48000.0);
}

TEST (FFTProcessorRate, IsToldToNobodyWhenItIsToldTooLate)
{
    std::optional<FFTProcessor> processor (std::in_place);
    auto numCalls = 0;
    processor->onSampleRateChanged = [&] (double) { ++numCalls; };
    processor->prepareToPlay (48000.0);
    processor.reset();

    runMessageLoopFor (20);
    EXPECT_EQ (numCalls, 0);
}
} // namespace
} // namespace cv::varlo
