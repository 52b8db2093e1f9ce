#include "dsp/FeedbackConditioner.h"

namespace cv::varlo
{
namespace
{
constexpr float thresholdDecibels = 1.0f;
constexpr float attackMilliseconds = 5.0f;
constexpr float releaseMilliseconds = 50.0f;
constexpr float ratio = 100.0f;
} // namespace

FeedbackConditioner::FeedbackConditioner()
{
    feedbackLimiter.setThreshold (thresholdDecibels);
    feedbackLimiter.setAttack (attackMilliseconds);
    feedbackLimiter.setRelease (releaseMilliseconds);
    feedbackLimiter.setRatio (ratio);
}

void FeedbackConditioner::prepare (const juce::dsp::ProcessSpec& spec)
{
    for (auto& ladder : ladders)
        ladder.prepare (spec.sampleRate);

    feedbackLimiter.prepare ({ spec.sampleRate, spec.maximumBlockSize, maxChannels });
}

void FeedbackConditioner::setCutoff (float hz) noexcept
{
    for (auto& ladder : ladders)
        ladder.setCutoff (hz);
}

void FeedbackConditioner::clear()
{
    for (auto& ladder : ladders)
        ladder.clear();

    feedbackLimiter.reset();
}

float FeedbackConditioner::processSample (int channel, float x)
{
    return feedbackLimiter.processSample (channel, ladders[(size_t) channel].processSample (x));
}
} // namespace cv::varlo
