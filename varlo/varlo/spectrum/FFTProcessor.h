#pragma once

#include "varlo/spectrum/SampleFifo.h"
#include "varlo/spectrum/SpectrumAnalyser.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <functional>

namespace cv::varlo
{
/** The thread that turns the plug-in's output into magnitude frames for a picture of it.

    It stands between three threads: the audio thread pushes samples, this one analyses them hop by hop,
    and the message thread takes the frames. It runs from construction to destruction, whether somebody
    looks or not, and needs no message loop. To be destroyed on the message thread, or when none runs,
    and after the last block.
*/
class FFTProcessor final : public juce::Thread
{
public:
    /** Floats in a frame, one magnitude for each bin. */
    static constexpr int numBins = SpectrumAnalyser::numBins;

    /** Starts the thread. */
    FFTProcessor();

    /** Ends the thread, and with it all delivery to onSampleRateChanged. Waits for its end however long it
        takes; anything beyond 1000 ms means that the machine has had no time for the thread.
    */
    ~FFTProcessor() override;

    /** Any thread but the audio thread: takes the rate of what is pushed, in hertz. If it is another one
        than before, onSampleRateChanged is called from the message loop. What waits in the queues stays.
    */
    void prepareToPlay (double newSampleRate);

    /** Audio thread: takes over the mean of the channels, one channel as it is, and wakes the thread when there is
        enough for a frame. Allocates nothing; the waking takes the event's short lock, and nothing else here takes
        any.
    */
    void pushAudio (const juce::AudioBuffer<float>&) noexcept;

    /** Called on the message thread, with `sampleRate`. To be set, and emptied, on that thread. */
    std::function<void (double)> onSampleRateChanged;

    /** Hertz, as told by the last prepareToPlay(). */
    std::atomic<double> sampleRate { 44100.0 };

    /** Mono samples from the audio thread to this one. */
    SampleFifo audioFifo { fifoCapacity };

    /** Frames of numBins floats from this thread to the message thread, one behind the other with
        nothing in between: read `numBins` at a time. Without a reader the newest 31 frames stay.
    */
    SampleFifo spectrumFifo { fifoCapacity };

private:
    static constexpr int fifoCapacity = 16384;

    void run() override;
    void pushFrame (const float* magnitudes) noexcept;

    SpectrumAnalyser analyser;

    JUCE_DECLARE_WEAK_REFERENCEABLE (FFTProcessor)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FFTProcessor)
};
} // namespace cv::varlo
