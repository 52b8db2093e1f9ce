#include "support/LiteralModel.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace cv::test
{
namespace
{
constexpr float pi = 3.14159265358979323846f;

template <typename Float>
bool nearlyEqual (Float a, Float b)
{
    if (! std::isfinite (a) || ! std::isfinite (b))
        return std::equal_to<Float>() (a, b);

    const auto difference = std::abs (a - b);
    return difference <= std::numeric_limits<Float>::min()
           || difference <= std::numeric_limits<Float>::epsilon() * std::max (std::abs (a), std::abs (b));
}

float finiteOr (float otherwise, float value)
{
    return std::isfinite (value) ? value : otherwise;
}

/** A power of ten that the compiler can't work out ahead: it rounds otherwise than the library. */
float decibelsToGain (float decibels)
{
    const volatile float exponent = decibels * 0.05f;
    return std::pow (10.0f, exponent);
}
} // namespace

void LiteralModel::Ramp::setTarget (float value)
{
    if (nearlyEqual (value, target))
        return;

    target = value;

    if (length <= 0)
    {
        current = value;
        countdown = 0;
        return;
    }

    countdown = length;
    step = (target - current) / (float) length;
}

void LiteralModel::Ramp::setLength (double sampleRate, double seconds)
{
    length = (int) std::floor (seconds * sampleRate);
    current = target;
    countdown = 0;
}

float LiteralModel::Ramp::next()
{
    if (countdown > 0)
    {
        --countdown;
        current = countdown > 0 ? current + step : target;
    }

    return current;
}

float LiteralModel::DelayLine::writeAndRead (float input, float delaySamples)
{
    const auto size = (int) memory.size();
    const auto whole = (int) std::floor (std::min (delaySamples, (float) (size - 2)));

    memory[(size_t) writeIndex] = input;
    const auto output = memory[(size_t) ((writeIndex - whole + size) % size)];
    writeIndex = (writeIndex + 1) % size;
    return output;
}

void LiteralModel::Ladder::prepare (double newRate)
{
    s0 = s1 = s2 = s3 = 0.0f;

    if (nearlyEqual (newRate, rate))
        return;

    rate = newRate;
    cutoff.setLength (rate, 0.01);
    setCoefficients (cutoff.target);
}

void LiteralModel::Ladder::setCoefficients (float hz)
{
    const auto t = std::tan (std::min (0.5f * (float) rate, hz) * (pi / (float) rate));
    g = 2.0f * t / (2.0f + 2.0f * t);
    a = (2.0f * t - 2.0f) / (2.0f + 2.0f * t);
}

float LiteralModel::Ladder::step (float x)
{
    if (cutoff.isRunning())
        setCoefficients (cutoff.next());

    const auto y = s3 + g * (s2 + g * (s1 + g * (s0 + x)));
    const auto u0 = g * x;
    const auto y0 = s0 + u0;
    const auto u1 = g * y0;
    const auto y1 = s1 + u1;
    const auto u2 = g * y1;
    const auto y2 = s2 + u2;
    const auto u3 = g * y2;

    s0 = u0 - a * y0;
    s1 = u1 - a * y1;
    s2 = u2 - a * y2;
    s3 = u3 - a * y;
    return y;
}

void LiteralModel::Limiter::prepare (double sampleRate)
{
    const auto factor = -2.0 * 3.14159265358979323846 * 1000.0 / sampleRate;
    attack = (float) std::exp (factor / 5.0);
    release = (float) std::exp (factor / 50.0);
    envelope = 0.0f;
}

float LiteralModel::Limiter::step (float x)
{
    static const auto threshold = decibelsToGain (1.0f);
    static const auto inverseThreshold = 1.0f / threshold;

    const auto level = std::abs (x);
    envelope = level + (level > envelope ? attack : release) * (envelope - level);

    const auto gain = envelope < threshold ? 1.0f : std::pow (envelope * inverseThreshold, 1.0f / 100.0f - 1.0f);
    return gain * x;
}

void LiteralModel::Lowpass::prepare (double newRate)
{
    s1 = finiteOr (0.0f, s1);
    s2 = finiteOr (0.0f, s2);

    if (nearlyEqual (newRate, rate))
        return;

    rate = newRate;
    s1 = s2 = 0.0f;
    setTarget();
    cutoff.setLength (rate, 0.01);
    q.setLength (rate, 0.01);
}

void LiteralModel::Lowpass::setCutoff (float hz)
{
    if (nearlyEqual (hz, requested))
        return;

    requested = hz;
    setTarget();
}

void LiteralModel::Lowpass::setTarget()
{
    if (requested > 0.0f && rate > 0.0)
        cutoff.setTarget (std::min ((float) rate * 0.5f - 1.0f, requested));
}

void LiteralModel::Lowpass::setCoefficients (float hz, float newQ)
{
    g = (float) std::tan (3.14159265358979323846 * (double) hz / rate);
    r2 = (float) (1.0 / (double) newQ);
    h = (float) (1.0 / (1.0 + (double) (r2 * g) + (double) (g * g)));
}

float LiteralModel::Lowpass::step (float x)
{
    const auto high = h * (x - s1 * (g + r2) - s2);
    const auto band = high * g + s1;
    s1 = high * g + band;
    const auto low = band * g + s2;
    s2 = band * g + low;
    return low;
}

void LiteralModel::prepare (double newRate, int samplesPerBlock, const Values& values)
{
    rate = newRate;
    largestBlock = samplesPerBlock;
    setParameters (values);

    dryGain.setLength (rate, 0.005);
    wetGain.setLength (rate, 0.005);

    for (auto& channel : channels)
    {
        channel.rate = (float) rate;
        channel.line.memory.resize ((size_t) std::max (4, (int) std::ceil (10.0f * channel.rate) + 2));
        channel.line.clear();
        channel.delay.setTarget (channel.delaySeconds * channel.rate);
        channel.delay.setLength (channel.rate, 0.5);
        channel.loopGain.setLength (channel.rate, 1.0);
        channel.ladder.prepare (rate);
        channel.lowpass.prepare (rate);
        channel.limiter.prepare (rate);
        channel.feedbackSample = finiteOr (0.0f, channel.feedbackSample);
    }
}

void LiteralModel::setParameters (const Values& asked)
{
    const Values values { .mixPercent = finiteOr (50.0f, asked.mixPercent),
                          .degradePercent = finiteOr (0.0f, asked.degradePercent),
                          .delayMilliseconds = finiteOr (1000.0f, asked.delayMilliseconds),
                          .feedbackPercent = finiteOr (50.0f, asked.feedbackPercent),
                          .lowpassHz = finiteOr (5000.0f, asked.lowpassHz),
                          .resonancePercent = finiteOr (0.0f, asked.resonancePercent) };

    const auto mix = values.mixPercent * 0.01f;
    dryGain.setTarget (1.0f - mix);
    wetGain.setTarget (mix);

    const auto seconds = values.delayMilliseconds * 0.001f;
    const auto resonance = values.resonancePercent * 0.01f;

    for (auto& channel : channels)
    {
        if (! nearlyEqual (seconds, channel.delaySeconds))
        {
            channel.delaySeconds = seconds;
            channel.delay.setTarget (seconds * channel.rate);
        }

        channel.loopGain.setTarget (values.feedbackPercent * 0.01f * 0.92f);
        channel.ladder.cutoff.setTarget (values.lowpassHz);
        channel.lowpass.setCutoff (values.lowpassHz);
        channel.lowpass.q.setTarget (std::pow (resonance, 3.0f) * 20.0f + 0.1f);
    }

    setDegrade (values.degradePercent * 0.01f);
}

void LiteralModel::setDegrade (float amount)
{
    if (nearlyEqual (amount, degradeAmount) && nearlyEqual ((float) rate, degradeRate))
        return;

    degradeAmount = amount;
    degradeRate = (float) rate;

    const auto exponent = std::pow (amount, 0.7f) * 5.0f + 1.0f;
    const auto hold = (degradeRate / 100.0f - 1.0f) * std::pow (amount, exponent) + 1.0f;
    holdLength = std::max (1, (int) std::lrint (hold));

    for (auto& channel : channels)
        channel.holdCounter = holdLength;
}

bool LiteralModel::hasJumped (int numSamples, const std::optional<Position>& position)
{
    largestBlock = std::max (largestBlock, numSamples);

    if (! position)
        return false;

    previousTime = lastTime;
    lastTime = position->timeInSamples;

    if (position->bpm)
    {
        previousBpm = lastBpm;
        lastBpm = *position->bpm;
    }

    const auto delta = lastTime - previousTime;
    const auto limit = std::int64_t { 2 } * largestBlock;
    const auto jumped = delta > limit || (! position->looping && delta < -limit);

    if (position->hostIsLive && ! nearlyEqual (lastBpm, previousBpm))
        return false;

    return jumped;
}

void LiteralModel::clearMemories()
{
    for (auto& channel : channels)
    {
        channel.line.clear();
        channel.limiter.envelope = 0.0f;
        channel.ladder.s0 = channel.ladder.s1 = channel.ladder.s2 = channel.ladder.s3 = 0.0f;
        channel.lowpass.s1 = channel.lowpass.s2 = 0.0f;
        channel.feedbackSample = finiteOr (0.0f, channel.feedbackSample);
    }
}

void LiteralModel::runDelayLoop (Channel& channel, std::vector<float>& samples)
{
    for (auto& sample : samples)
    {
        const auto delaySamples = std::max (channel.delay.next(), 0.0f);
        const auto gain = channel.loopGain.next();
        const auto delayed = channel.line.writeAndRead (sample + gain * channel.feedbackSample, delaySamples);

        channel.feedbackSample = channel.limiter.step (channel.ladder.step (delayed));
        sample = delayed;
    }
}

void LiteralModel::runDegrade (Channel& channel, std::vector<float>& samples) const
{
    for (auto& sample : samples)
    {
        if (channel.holdCounter >= holdLength)
        {
            channel.held = sample;
            channel.holdCounter = 0;
        }

        sample = channel.held * degradeAmount + sample * (1.0f - degradeAmount);
        ++channel.holdCounter;
    }
}

void LiteralModel::runLowpass (Channel& channel, std::vector<float>& samples)
{
    auto& lowpass = channel.lowpass;
    const auto moving = lowpass.cutoff.isRunning() || lowpass.q.isRunning();

    if (! moving)
        lowpass.setCoefficients (lowpass.cutoff.current, lowpass.q.current);

    for (auto& sample : samples)
    {
        if (moving)
        {
            const auto hz = lowpass.cutoff.next();
            lowpass.setCoefficients (hz, lowpass.q.next());
        }

        sample = lowpass.step (sample);
    }
}

void LiteralModel::applyGain (Ramp& gain, std::vector<std::vector<float>>& buffer)
{
    const auto numSamples = buffer.front().size();

    for (size_t i = 0; i < numSamples; ++i)
    {
        const auto factor = gain.next();

        for (auto& samples : buffer)
            samples[i] *= factor;
    }
}

float LiteralModel::guard (float sample)
{
    return std::isfinite (sample) ? std::clamp (sample, -4.0f, 4.0f) : 0.0f;
}

void LiteralModel::process (std::vector<std::vector<float>>& buffer,
                            const Values& values,
                            const std::optional<Position>& position)
{
    const auto numSamples = buffer.front().size();

    if (hasJumped ((int) numSamples, position))
    {
        clearMemories();
        ++numJumps;
    }

    setParameters (values);

    auto dry = buffer;
    applyGain (dryGain, dry);

    for (size_t c = 0; c < buffer.size(); ++c)
    {
        runDelayLoop (channels[c], buffer[c]);
        runDegrade (channels[c], buffer[c]);
        runLowpass (channels[c], buffer[c]);
    }

    applyGain (wetGain, buffer);

    for (size_t c = 0; c < buffer.size(); ++c)
        for (size_t i = 0; i < numSamples; ++i)
            buffer[c][i] = guard (buffer[c][i] + dry[c][i]);
}
} // namespace cv::test
