#include "varlo/dsp/FeedbackLimiter.h"

#include <juce_audio_basics/juce_audio_basics.h>

namespace cv::varlo
{
namespace
{
constexpr double attackMilliseconds = 5.0;
constexpr double releaseMilliseconds = 50.0;
constexpr float ratio = 100.0f;

/** Read at run time: a compiler that works out the power ahead rounds it otherwise than the library. */
const volatile float thresholdDecibels = 1.0f;

float getGainOfChannel (float envelope, float threshold) noexcept
{
    return envelope < threshold ? 1.0f : std::pow (envelope * (1.0f / threshold), 1.0f / ratio - 1.0f);
}
} // namespace

FeedbackLimiter::FeedbackLimiter()
{
    coefficients.threshold = Frame (juce::Decibels::decibelsToGain<float> (thresholdDecibels));
}

void FeedbackLimiter::prepare (double sampleRate) noexcept
{
    const auto getCoefficient = [sampleRate] (double milliseconds)
    { return Frame ((float) std::exp (-2.0 * juce::MathConstants<double>::pi * 1000.0 / sampleRate / milliseconds)); };

    coefficients.attack = getCoefficient (attackMilliseconds);
    coefficients.release = getCoefficient (releaseMilliseconds);
    clear();
}

Frame FeedbackLimiter::getGain (Frame envelope, Frame threshold) noexcept
{
    return { getGainOfChannel (envelope.left(), threshold.left()),
             getGainOfChannel (envelope.right(), threshold.right()) };
}
} // namespace cv::varlo
