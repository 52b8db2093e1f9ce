#include "varlo/dsp/DelayEngine.h"

#include "varlo/dsp/OutputGuard.h"

namespace cv::varlo
{
namespace
{
/** At full Feedback the loop still loses a little, so that repeats always die away in the end. */
constexpr float maxLoopGain = 0.92f;

/** What the idle second channel of a mono block is fed with. */
constexpr std::array<float, maxPartLength> silence {};

/** From 0.1, overdamped, to 20.1; the cube leaves most of the knob to the gentle half. */
float resonanceToQ (float resonancePercent) noexcept
{
    return std::pow (resonancePercent * 0.01f, 3.0f) * 20.0f + 0.1f;
}
} // namespace

void DelayEngine::prepare (double newSampleRate, const ParameterValues& values)
{
    sampleRate = newSampleRate;
    degrade.prepare ((float) sampleRate);

    // Before the first prepare no ramp has a length, so these targets take effect at once.
    setParameters (values);

    dryGain.reset (sampleRate, mixRampSeconds);
    wetGain.reset (sampleRate, mixRampSeconds);

    const auto rate = (float) sampleRate;
    memory.prepare ((int) std::ceil ((float) maxDelaySeconds * rate));
    delay.setTargetValue (delaySeconds * rate);
    delay.reset (rate, delayRampSeconds);
    loopGain.reset (rate, loopGainRampSeconds);
    feedbackSample = finiteOrZero (feedbackSample);

    ladder.prepare (sampleRate);
    limiter.prepare (sampleRate);
    lowpass.prepare (sampleRate);
}

void DelayEngine::setParameters (const ParameterValues& values) noexcept
{
    const auto mix = values.mixPercent * 0.01f;
    dryGain.setTargetValue (1.0f - mix);
    wetGain.setTargetValue (mix);

    if (const auto seconds = values.delayMilliseconds * 0.001f; ! juce::approximatelyEqual (seconds, delaySeconds))
    {
        delaySeconds = seconds;
        delay.setTargetValue (seconds * (float) sampleRate);
    }

    loopGain.setTargetValue (values.feedbackPercent * 0.01f * maxLoopGain);
    degrade.setAmount (values.degradePercent * 0.01f);
    ladder.setCutoff (values.lowpassHz);
    lowpass.setCutoff (values.lowpassHz);
    lowpass.setResonance (resonanceToQ (values.resonancePercent));
}

void DelayEngine::clear() noexcept
{
    memory.clear();
    ladder.clear();
    limiter.clear();
    lowpass.clear();
    feedbackSample = finiteOrZero (feedbackSample);
}

DelayEngine::Channels DelayEngine::getChannels (juce::AudioBuffer<float>& buffer, int start) noexcept
{
    auto* left = buffer.getWritePointer (0, start);

    if (buffer.getNumChannels() == 1)
        return { left, silence.data(), left, unusedOutput.data() };

    auto* right = buffer.getWritePointer (1, start);
    return { left, right, left, right };
}

void DelayEngine::process (juce::AudioBuffer<float>& buffer) noexcept
{
    if (buffer.getNumChannels() == 0)
        return;

    const auto feedbackBefore = feedbackSample;
    const auto lowpassBefore = lowpass.memory;

    for (int start = 0; start < buffer.getNumSamples(); start += maxPartLength)
        processPart (buffer, start, juce::jmin (maxPartLength, buffer.getNumSamples() - start));

    if (buffer.getNumChannels() == 1)
    {
        // The second channel stands idle: what a prepare() leaves to it waits as it was.
        feedbackSample = Frame (feedbackSample.left(), feedbackBefore.right());
        lowpass.memory = { Frame (lowpass.memory.s1.left(), lowpassBefore.s1.right()),
                           Frame (lowpass.memory.s2.left(), lowpassBefore.s2.right()) };
    }
}

void DelayEngine::processPart (juce::AudioBuffer<float>& buffer, int start, int numFrames) noexcept
{
    const auto channels = getChannels (buffer, start);
    const auto numChannels = juce::jmin (buffer.getNumChannels(), maxChannels);
    updateSettings (numFrames, numChannels);

    for (int offset = 0; offset < numFrames;)
    {
        // Its value is known already, and a delay of 0 reads it.
        *memory.getWritePosition() = channels.getInput (offset) + settings.getGains (offset).loop * feedbackSample;

        const auto maxLength = juce::jmin (numFrames - offset, memory.getRoomInARow());
        const auto delayed =
            settings.delayMoves ? readGliding (offset, maxLength) : memory.read (settings.delays[0], maxLength);
        const auto* degraded = degradeRun (delayed, buffer.getNumChannels());

        if (settings.filtersMove)
            settings.gainsMove ? runLoop<true, true> (channels, offset, delayed, degraded)
                               : runLoop<true, false> (channels, offset, delayed, degraded);
        else
            settings.gainsMove ? runLoop<false, true> (channels, offset, delayed, degraded)
                               : runLoop<false, false> (channels, offset, delayed, degraded);

        memory.finishWrite (delayed.length);
        offset += delayed.length;
    }

    for (int channel = maxChannels; channel < buffer.getNumChannels(); ++channel)
    {
        auto* samples = buffer.getWritePointer (channel, start);

        for (int i = 0; i < numFrames; ++i)
            samples[i] = guardOutput (Frame (samples[i]) * settings.getGains (i).dry).left();
    }
}

void DelayEngine::updateSettings (int numFrames, int numChannels) noexcept
{
    settings.filtersMove = ladder.isMoving (numChannels) || lowpass.isMoving (numChannels);
    settings.gainsMove = loopGain.isSmoothing() || dryGain.isSmoothing() || wetGain.isSmoothing();
    settings.delayMoves = delay.isSmoothing();

    ladder.fillCoefficients (settings.ladder.data(), settings.filtersMove ? numFrames : 1, numChannels);
    lowpass.fillCoefficients (settings.lowpass.data(), settings.filtersMove ? numFrames : 1, numChannels);

    for (int i = 0; i < (settings.gainsMove ? numFrames : 1); ++i)
        settings.gains[(size_t) i] = { Frame (loopGain.getNextValue()), Frame (dryGain.getNextValue()),
                                       Frame (wetGain.getNextValue()) };

    updateDelays (settings.delayMoves ? numFrames : 1);
}

void DelayEngine::updateDelays (int numFrames) noexcept
{
    std::array<float, maxPartLength> exactDelays;

    for (int i = 0; i < numFrames; ++i)
        exactDelays[(size_t) i] = delay.getNextValue();

    juce::FloatVectorOperations::clip (exactDelays.data(), exactDelays.data(), 0.0f, (float) memory.getMaxDelay(),
                                       numFrames);

    for (int i = 0; i < numFrames; ++i)
        settings.delays[(size_t) i] = (int) exactDelays[(size_t) i];
}

DelayMemory::Run DelayEngine::readGliding (int offset, int maxLength) noexcept
{
    const auto* delays = settings.delays.data() + offset;
    int length = 0;

    for (; length < maxLength && length <= delays[length]; ++length)
        delayedFrames[(size_t) length] = memory.readFrame (delays[length], length);

    return { delayedFrames.data(), length };
}

const Frame* DelayEngine::degradeRun (DelayMemory::Run delayed, int numChannels) noexcept
{
    if (numChannels > maxChannels)
        degradedFrames.fill (Frame());
    else if (degrade.isTransparent())
        return delayed.frames;
    else
        degrade.process (delayed.frames, degradedFrames.data(), delayed.length, numChannels);

    return degradedFrames.data();
}

template <bool filtersMove, bool gainsMove>
void DelayEngine::runLoop (const Channels& channels,
                           int offset,
                           DelayMemory::Run delayed,
                           const Frame* degraded) noexcept
{
    // In local variables, where the compiler can keep them in registers from frame to frame.
    auto ladderMemory = ladder.memory;
    auto envelope = limiter.envelope;
    auto lowpassMemory = lowpass.memory;
    auto feedback = feedbackSample;
    const auto limiting = limiter.getCoefficients();
    const auto restingLadder = settings.ladder[0];
    const auto restingLowpass = settings.lowpass[0];
    const auto restingGains = settings.gains[0];
    auto* written = memory.getWritePosition();

    for (int i = 0; i < delayed.length; ++i)
    {
        const auto frame = (size_t) (offset + i);
        const auto& gains = gainsMove ? settings.gains[frame] : restingGains;
        const auto input = channels.getInput (offset + i);
        written[i] = input + gains.loop * feedback;

        const auto darkened =
            ladderMemory.process (delayed.frames[i], filtersMove ? settings.ladder[frame] : restingLadder);
        feedback = envelope.process (darkened, limiting);

        const auto wet = lowpassMemory.process (degraded[i], filtersMove ? settings.lowpass[frame] : restingLowpass);
        channels.setOutput (offset + i, guardOutput (wet * gains.wet + input * gains.dry));
    }

    ladder.memory = ladderMemory;
    limiter.envelope = envelope;
    lowpass.memory = lowpassMemory;
    feedbackSample = feedback;
}
} // namespace cv::varlo
