#pragma once

#include <juce_dsp/juce_dsp.h>

#include <array>

namespace cv::varlo
{
/** Turns a signal into magnitude frames: a 1024-point transform under a Hann window, every 512 samples.

    A full-scale sine in the middle of a bin gives about 1.0 there; bin i stands for the frequency
    i * sampleRate / 1024. The signal before the first sample is silence.

    Threads: one at a time. Only construction allocates.
*/
class SpectrumAnalyser
{
public:
    static constexpr int windowSamples = 1024;

    /** Frames overlap by half. */
    static constexpr int hopSamples = windowSamples / 2;

    /** From 0 Hz to half the sample rate, both included. */
    static constexpr int numBins = windowSamples / 2 + 1;

    SpectrumAnalyser();

    /** Takes the next `hopSamples` samples and returns `numBins` linear magnitudes of the last
        `windowSamples`, which stay valid until the next call.
    */
    const float* analyse (const float* hop) noexcept;

private:
    std::array<float, windowSamples> fftWindowSamples {};
    std::array<float, 2 * windowSamples> fftData {};
    const juce::dsp::FFT fft;
    const juce::dsp::WindowingFunction<float> spectrumWindow;

    JUCE_DECLARE_NON_COPYABLE (SpectrumAnalyser)
};
} // namespace cv::varlo
