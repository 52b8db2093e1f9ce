#pragma once

#include "dsp/FeedbackLadder.h"

#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
/** What happens to each delayed sample on its way back into the delay line: the ladder darkens it,
    then a limiter holds it near +1 dB, so that a loud loop neither runs away nor stays bright.

    The two channels share nothing but settings. Threads: prepare() never at the same time as the
    others, which are the audio thread's and allocate nothing.
*/
class FeedbackConditioner
{
public:
    static constexpr int maxChannels = 2;

    FeedbackConditioner();

    /** Takes the rate, above 0, and clears all memories. Allocates. */
    void prepare (const juce::dsp::ProcessSpec&);

    /** Ramps both ladders to a cutoff in hertz within 10 ms. */
    void setCutoff (float hz) noexcept;

    /** Empties the ladders and the limiter's envelopes; settings and ramps stay. */
    void clear();

    /** Conditions one sample of channel 0 or 1. */
    float processSample (int channel, float x);

private:
    std::array<FeedbackLadder, maxChannels> ladders;
    juce::dsp::Compressor<float> feedbackLimiter;
};
} // namespace cv::varlo
