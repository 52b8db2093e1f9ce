#pragma once

#include "varlo/dsp/ChannelRamps.h"
#include "varlo/dsp/Frame.h"

namespace cv::varlo
{
/** The resonant low-pass on the wet signal, with cutoff c and q of each channel on ramps of 10 ms.

    A state variable filter in the topology-preserving form, with two integrators s1 and s2:

        g = tan (pi c / f),  R = 1 / q,  h = 1 / (1 + R g + g^2)

        high = h (x - s1 (g + R) - s2),   band = g high + s1,   low = g band + s2.

    The same samples as those of juce::dsp::StateVariableTPTFilter. A q of 0.1 is overdamped, about 20 dB
    down at the cutoff; 1/sqrt 2 is flat; above it the cutoff rings.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class WetLowpass
{
public:
    static constexpr double rampSeconds = 0.01;

    struct Coefficients
    {
        Frame g, gPlusR, h;
    };

    /** What the two integrators remember of the signal. */
    struct Memory
    {
        /** Filters one frame. */
        Frame process (Frame x, const Coefficients& now) noexcept
        {
            const auto [g, gPlusR, h] = now;
            const auto high = h * (x - s1 * gPlusR - s2);

            const auto band = high * g + s1;
            s1 = high * g + band;

            const auto low = band * g + s2;
            s2 = band * g + low;

            return low;
        }

        Frame s1, s2;
    };

    /** At a new rate in hertz, above 0, clears the memory and lets all ramps arrive; at the same rate only
        what is not finite leaves the memory.
    */
    void prepare (double sampleRate) noexcept;

    /** Ramps to a cutoff in hertz, kept one hertz under half the rate. Before prepare() it is only
        noted; a cutoff that is not above 0 is never taken over.
    */
    void setCutoff (float hz) noexcept;

    /** Ramps to a q above 0. */
    void setResonance (float q) noexcept { resonance.setTarget (q); }

    /** The cutoff in hertz that is being ramped to or rested on. */
    float getTargetCutoff() const noexcept { return cutoff.getTarget(); }

    /** Empties the memory; settings and ramps stay. */
    void clear() noexcept { memory = {}; }

    /** Whether a ramp runs in the first `numChannels` channels. */
    bool isMoving (int numChannels) const noexcept
    {
        return cutoff.isMoving (numChannels) || resonance.isMoving (numChannels);
    }

    /** The coefficients for the next frames, up to maxPartLength, of the first `numChannels` channels. They are worked
        out while a ramp runs and where the settings have changed without one; the ramps of a second channel that
        is left out wait.
    */
    void fillCoefficients (Coefficients* run, int numFrames, int numChannels) noexcept;

    Memory memory;

private:
    struct ChannelCoefficients
    {
        float g, gPlusR, h;
    };

    void updateCutoffTarget() noexcept;
    ChannelCoefficients getCoefficientsAt (float cutoffHz, float q) const noexcept;

    ChannelRamps cutoff; // hertz
    ChannelRamps resonance;
    Coefficients coefficients;
    float lastCutoff = 0.0f; // what the coefficients were worked out from
    float lastQ = 0.0f;
    float requestedCutoff = 0.0f;
    double sampleRate = 0.0;
};
} // namespace cv::varlo
