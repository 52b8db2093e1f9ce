#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
/** One channel's resonant low-pass on the wet signal, with cutoff and resonance on ramps of 10 ms.

    The filter is JUCE's state variable filter in the topology-preserving form. Its resonance is a q:
    0.1 is overdamped, about 20 dB down at the cutoff; 1/sqrt 2 is flat; above it the cutoff rings.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class WetLowpass
{
public:
    static constexpr double rampSeconds = 0.01;

    WetLowpass();

    /** At a new rate clears the memory and lets both ramps arrive; at the same rate does nothing. The
        rate is above 0. Allocates.
    */
    void prepare (const juce::dsp::ProcessSpec&);

    /** Ramps to a cutoff in hertz, kept one hertz under half the rate. Before prepare() it is only
        noted; a cutoff that is not above 0 is never taken over.
    */
    void setCutoff (float hz) noexcept;

    /** Ramps to a q above 0. */
    void setResonance (float q) noexcept { resonanceSmoother.setTargetValue (q); }

    /** The cutoff in hertz that is being ramped to or rested on. */
    float getTargetCutoff() const noexcept { return cutoffSmoother.getTargetValue(); }

    /** Empties the filter's memory; settings and ramps stay. */
    void clear() { filter.reset(); }

    /** Works in place. prepare() has to have been called. */
    void process (float* samples, int numSamples);

private:
    void updateCutoffTarget() noexcept;

    float requestedCutoff = 0.0f;
    double sampleRate = 0.0;
    juce::dsp::StateVariableTPTFilter<float> filter;
    juce::SmoothedValue<float> cutoffSmoother; // hertz
    juce::SmoothedValue<float> resonanceSmoother;
};
} // namespace cv::varlo
