#include "varlo/editor/SpectrogramComponent.h"

#include "support/MessageLoop.h"
#include "support/ProcessorHarness.h"
#include "support/Rendering.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#if defined(__linux__)
    #include "support/AudioThreadWatch.h"
#endif

namespace cv::varlo
{
namespace
{
using cv::test::render;
using cv::test::runMessageLoopUntil;

const juce::Colour blank { 0xff060606 };
const juce::Colour loudest { 0xfffde724 };
constexpr auto numBins = FFTProcessor::numBins;

class SpectrogramComponentTest : public testing::Test
{
protected:
    /** Queues a frame as the analysis does, silent but for one bin at full scale. */
    void pushFrame (int loudBin)
    {
        std::vector<float> frame (numBins, 0.0f);
        frame[(size_t) loudBin] = 1.0f;
        fftProcessor.spectrumFifo.pushOverwriting (frame.data(), numBins);
    }

    juce::Colour getHistoryPixel (int column, int bin) const
    {
        const auto& image = spectrogram.getHistoryImage();
        return image.getPixelAt (column, image.getHeight() - 1 - bin);
    }

    FFTProcessor fftProcessor;
    SpectrogramComponent spectrogram { fftProcessor };
};

TEST_F (SpectrogramComponentTest, StartsBlankAndOpaqueAndLooksEvery33Milliseconds)
{
    EXPECT_TRUE (spectrogram.isOpaque());
    EXPECT_EQ (spectrogram.getTimerInterval(), 33);
    EXPECT_EQ (spectrogram.getHistoryImage().getBounds(), juce::Rectangle (431, 513));

    spectrogram.setSize (100, 60);
    EXPECT_EQ (render (spectrogram).getPixelAt (50, 30), blank);
}

TEST_F (SpectrogramComponentTest, DrawsAllFramesThatWaitInOneCallback)
{
    for (auto bin = 10; bin < 30; ++bin)
        pushFrame (bin);

    spectrogram.timerCallback();
    EXPECT_EQ (fftProcessor.spectrumFifo.getNumReady(), 0);

    for (auto i = 0; i < 20; ++i)
        EXPECT_EQ (getHistoryPixel (411 + i, 10 + i), loudest) << i;

    EXPECT_EQ (getHistoryPixel (410, 9), juce::Colours::transparentBlack);
}

TEST_F (SpectrogramComponentTest, LeavesAPartOfAFrameWaiting)
{
    pushFrame (5);
    const std::vector<float> part (100, 1.0f);
    fftProcessor.spectrumFifo.pushOverwriting (part.data(), 100);

    spectrogram.timerCallback();
    EXPECT_EQ (fftProcessor.spectrumFifo.getNumReady(), 100);
    EXPECT_EQ (getHistoryPixel (430, 5), loudest);
}

TEST_F (SpectrogramComponentTest, ARateChangeClearsAndResizesThePicture)
{
    pushFrame (5);
    spectrogram.timerCallback();
    fftProcessor.prepareToPlay (48000.0);

    EXPECT_TRUE (runMessageLoopUntil ([this] { return spectrogram.getHistoryImage().getWidth() == 469; }));
    EXPECT_EQ (spectrogram.getHistoryImage().getHeight(), 471);
    EXPECT_EQ (getHistoryPixel (468, 5), juce::Colours::transparentBlack);
}

TEST_F (SpectrogramComponentTest, LetsGoOfTheAnalysisWhenItGoes)
{
    FFTProcessor other;

    {
        const SpectrogramComponent shortLived (other);
        EXPECT_TRUE (other.onSampleRateChanged);
    }

    EXPECT_FALSE (other.onSampleRateChanged);
}

TEST_F (SpectrogramComponentTest, FramesFromBeforeItOpenedComeFirstAllAtOnce)
{
    FFTProcessor other;
    std::vector<float> frame (numBins, 1.0f);

    for (auto i = 0; i < 50; ++i)
        other.spectrumFifo.pushOverwriting (frame.data(), numBins);

    SpectrogramComponent late (other);
    late.timerCallback();

    // The queue of 16384 floats keeps the newest 31 frames.
    EXPECT_EQ (late.getHistoryImage().getPixelAt (431 - 31, 100), loudest);
    EXPECT_EQ (late.getHistoryImage().getPixelAt (431 - 32, 100), juce::Colours::transparentBlack);
}

TEST_F (SpectrogramComponentTest, ScalesThePictureIntoAFrameOfOnePixel)
{
    for (auto i = 0; i < 431; ++i)
        pushFrame (256), spectrogram.timerCallback();

    spectrogram.setSize (433, 515);
    const auto image = render (spectrogram);

    // In this size a bin is exactly one row, one below the upper edge.
    EXPECT_EQ (image.getPixelAt (216, 1 + 512 - 256), loudest);
    EXPECT_EQ (image.getPixelAt (216, 2 + 512 - 256), blank);
    EXPECT_EQ (image.getPixelAt (216, 512 - 256), blank);
}

TEST_F (SpectrogramComponentTest, HasRoundedCornersInTheEditorsColourAndADarkFrame)
{
    spectrogram.setSize (1000, 400);
    const auto image = render (spectrogram);

    // Edges may lose a trace to the smoothing.
    const auto expectGrey = [&] (int x, int y, int grey)
    { EXPECT_NEAR (image.getPixelAt (x, y).getRed(), grey, 2) << x << ' ' << y; };

    expectGrey (0, 0, 0x15);
    expectGrey (2, 2, 0x15);
    expectGrey (999, 399, 0x15);
    expectGrey (500, 0, 0x17);
    expectGrey (500, 399, 0x19);
    expectGrey (0, 200, 0x18);
    expectGrey (999, 200, 0x18);
    EXPECT_EQ (image.getPixelAt (500, 1), blank);

    // The corner's radius is 3 % of the height: 12 pixels inside it the picture begins.
    EXPECT_EQ (image.getPixelAt (6, 6), blank);
}

TEST_F (SpectrogramComponentTest, PaintsInAnySize)
{
    pushFrame (5);
    spectrogram.timerCallback();

    for (const auto& [width, height] : { std::pair (0, 0), std::pair (1, 1), std::pair (2, 2), std::pair (3, 3),
                                         std::pair (1, 500), std::pair (3000, 2) })
    {
        spectrogram.setSize (width, height);
        juce::Image image (juce::Image::ARGB, juce::jmax (width, 1), juce::jmax (height, 1), true);
        juce::Graphics g (image);
        spectrogram.paint (g);
        spectrogram.paintOverChildren (g);
    }
}

#if defined(__linux__)
TEST_F (SpectrogramComponentTest, AFrameCostsNoAllocationOnceRunning)
{
    pushFrame (5);
    spectrogram.timerCallback();

    for (auto i = 0; i < 20; ++i)
        pushFrame (i);

    test::AudioThreadWatch watch;
    spectrogram.timerCallback();
    watch.stop();

    EXPECT_EQ (watch.numAllocations(), 0);
    EXPECT_EQ (getHistoryPixel (430, 19), loudest);
}
#endif

double getSweepHz (double seconds)
{
    return 100.0 + (20000.0 - 100.0) * seconds / 5.0;
}

/** Sends five seconds of a sine that rises steadily from 100 Hz to 20 kHz through the dry processor, and returns
    the picture of its output.
*/
juce::Image drawSweep (double sampleRate)
{
    test::ProcessorHarness harness (1);
    harness.set ("mix", 0.0f);
    harness.prepare (sampleRate);
    auto& fftProcessor = harness.processor.getFFTProcessor();
    SpectrogramComponent spectrogram (fftProcessor);
    juce::AudioBuffer<float> block (1, SpectrumAnalyser::hopSamples);
    auto phase = 0.0;

    for (auto column = 0; column < spectrogram.getHistoryImage().getWidth(); ++column)
    {
        for (auto n = 0; n < block.getNumSamples(); ++n)
        {
            const auto seconds = (column * block.getNumSamples() + n) / sampleRate;
            phase += juce::MathConstants<double>::twoPi * getSweepHz (seconds) / sampleRate;
            block.setSample (0, n, (float) (0.5 * std::sin (phase)));
        }

        harness.render (block);

        // Each block gives a frame, and none is to be lost.
        while (fftProcessor.spectrumFifo.getNumReady() < numBins)
            juce::Thread::yield();

        spectrogram.timerCallback();
    }

    return spectrogram.getHistoryImage();
}

int findBrightestRow (const juce::Image& image, int column)
{
    auto best = 0;
    auto most = -1.0f;

    // From the darkest to the brightest the palette grows in luminance all along.
    for (auto row = 0; row < image.getHeight(); ++row)
        if (const auto brightness = image.getPixelAt (column, row).getPerceivedBrightness(); brightness > most)
        {
            most = brightness;
            best = row;
        }

    return best;
}

TEST (SpectrogramSweepTest, ARisingSineDrawsARisingLine)
{
    for (const auto sampleRate : { 44100.0, 48000.0, 96000.0 })
    {
        const auto image = drawSweep (sampleRate);

        // The middle of a frame's window is the start of the block that completed it. The first frame is half
        // silence.
        for (auto column = 1; column < image.getWidth(); ++column)
        {
            const auto seconds = column * SpectrumAnalyser::hopSamples / sampleRate;
            const auto bin = getSweepHz (seconds) * SpectrumAnalyser::windowSamples / sampleRate;
            ASSERT_NEAR (image.getHeight() - 1 - findBrightestRow (image, column), bin, 1.0)
                << sampleRate << ' ' << column;
        }
    }
}
} // namespace
} // namespace cv::varlo
