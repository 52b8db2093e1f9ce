#include "varlo/spectrum/FFTProcessor.h"

namespace cv::varlo
{
namespace
{
constexpr int hopSamples = SpectrumAnalyser::hopSamples;
} // namespace

FFTProcessor::FFTProcessor() : Thread ("fft")
{
    startThread (Priority::highest);
}

FFTProcessor::~FFTProcessor()
{
    masterReference.clear();

    // Without a limit, after which JUCE would kill the thread, and the C library the process with it. Once it
    // is scheduled, the thread ends after the frames that wait, in far less than a second; on a machine that
    // has no time for it, that moment is worth waiting for.
    stopThread (-1);
}

void FFTProcessor::prepareToPlay (double newSampleRate)
{
    if (juce::approximatelyEqual (newSampleRate, sampleRate.load()))
        return;

    sampleRate = newSampleRate;

    // By the time the message arrives the plug-in may be gone.
    juce::MessageManager::callAsync (
        [self = juce::WeakReference (this)]
        {
            if (self != nullptr && self->onSampleRateChanged)
                self->onSampleRateChanged (self->sampleRate);
        });
}

void FFTProcessor::pushAudio (const juce::AudioBuffer<float>& audio) noexcept
{
    audioFifo.pushMeanOverwriting (audio);

    if (audioFifo.getNumReady() >= hopSamples)
        notify();
}

void FFTProcessor::run()
{
    std::array<float, hopSamples> hop {};

    while (! threadShouldExit())
    {
        wait (-1);

        if (threadShouldExit())
            return;

        while (audioFifo.pop (hop.data(), hopSamples))
            pushFrame (analyser.analyse (hop.data()));
    }
}

void FFTProcessor::pushFrame (const float* magnitudes) noexcept
{
    // A reader that is overtaken at the very moment of its finishing can set the queue's index to
    // somewhere within a frame, and would find no frame's beginning from then on.
    if (spectrumFifo.getNumReady() % numBins != 0)
        spectrumFifo.dropAll();

    spectrumFifo.pushOverwriting (magnitudes, numBins);
}
} // namespace cv::varlo
