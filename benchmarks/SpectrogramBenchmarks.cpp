#include "editor/SpectrogramComponent.h"

#include "support/Signals.h"

#include <benchmark/benchmark.h>
#include <juce_events/juce_events.h>

// The spectrogram on the message thread, at 44.1 kHz and in the size that it has in a new window.

namespace cv::benchmarks
{
namespace
{
constexpr int usualWidth = 994;
constexpr int usualHeight = 342;

/** A tick of the timer that finds so many frames, and the paint that follows. */
void tickAndPaint (benchmark::State& state)
{
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    varlo::FFTProcessor fftProcessor;
    varlo::SpectrogramComponent spectrogram (fftProcessor);
    spectrogram.setSize (usualWidth, usualHeight);
    juce::Image window (juce::Image::ARGB, usualWidth, usualHeight, true);

    const auto numFrames = static_cast<int> (state.range (0));
    const auto magnitudes = test::noise (numFrames * varlo::FFTProcessor::numBins, 1);

    for (auto _ : state)
    {
        fftProcessor.spectrumFifo.pushOverwriting (magnitudes.data(), static_cast<int> (magnitudes.size()));
        spectrogram.timerCallback();

        juce::Graphics g (window);
        spectrogram.paintEntireComponent (g, false);
    }
}

BENCHMARK (tickAndPaint)
    ->Name ("spectrogram/tick and paint")
    ->Arg (0)
    ->Arg (4)
    ->ArgName ("frames")
    ->Unit (benchmark::kMillisecond);
} // namespace
} // namespace cv::benchmarks
