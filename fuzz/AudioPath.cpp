#include "FuzzEnvironment.h"
#include "support/ProcessorHarness.h"

#include <cmath>
#include <cstring>

namespace
{
using cv::fuzz::require;

constexpr auto outputLimit = 4.0f;
constexpr auto maxSamplesPerInput = 8192;

/** Hands out the input's bytes, zeros behind their end. */
class Script
{
public:
    Script (const unsigned char* bytes, size_t numBytes) : data (bytes), size (numBytes) {}

    bool isAtEnd() const noexcept { return position >= size; }

    int nextByte() noexcept { return isAtEnd() ? 0 : data[position++]; }

private:
    const unsigned char* data;
    size_t size;
    size_t position = 0;
};

/** What happens before some samples, and how many they are. */
struct Segment
{
    int parameter = -1;
    float normalisedValue = 0.0f;
    bool isPlaying = false;
    juce::int64 jump = 0; // in samples, none or more than twice any block: less counts for some ways of cutting
    int sound = 0;
    int numSamples = 0;
};

Segment readSegment (Script& script)
{
    Segment segment;
    segment.parameter = script.nextByte() % 12; // half of the time none
    segment.normalisedValue = (float) script.nextByte() / 255.0f;
    const auto transport = script.nextByte();
    segment.isPlaying = transport % 2 != 0;
    segment.jump = transport % 8 == 7 ? (transport < 128 ? -1 : 1) * (juce::int64) (10000 + transport * 100) : 0;
    segment.sound = script.nextByte();
    segment.numSamples = (script.nextByte() * 8 + script.nextByte()) % 2048;
    return segment;
}

struct Session
{
    int numChannels;
    double sampleRate;
    std::vector<Segment> segments;
};

Session readSession (Script script)
{
    static constexpr double rates[] { 44100.0, 48000.0, 96000.0, 192000.0, 8000.0, 22050.0, 44101.5, 1000.0 };
    const auto start = script.nextByte();
    Session session { 1 + start % 2, rates[(size_t) (start / 2) % std::size (rates)], {} };

    for (auto numSamples = 0; ! script.isAtEnd() && numSamples < maxSamplesPerInput;)
    {
        session.segments.push_back (readSegment (script));
        numSamples += session.segments.back().numSamples;
    }

    return session;
}

/** Noise, now and then with samples that are none, or so small or large that they are none to a filter. */
void fill (juce::AudioBuffer<float>& buffer, int sound, juce::Random& random)
{
    static constexpr float levels[] { 0.0f, 1.0f, 0.5f, 1.0e-40f, 1.0e10f, 3.0e38f };
    static constexpr float oddities[] { NAN, INFINITY, -INFINITY, 1.0e-45f };
    const auto level = levels[(size_t) sound % std::size (levels)];

    for (auto channel = 0; channel < buffer.getNumChannels(); ++channel)
        for (auto i = 0; i < buffer.getNumSamples(); ++i)
            buffer.setSample (channel, i, level * (random.nextFloat() * 2.0f - 1.0f));

    if (sound >= 192 && buffer.getNumSamples() > 0)
        buffer.setSample (0, random.nextInt (buffer.getNumSamples()), oddities[(size_t) sound % std::size (oddities)]);
}

class Player
{
public:
    explicit Player (const Session& sessionToPlay) : session (sessionToPlay), harness (session.numChannels)
    {
        harness.prepare (session.sampleRate);
    }

    /** All samples, with each segment cut where `nextCut` says, given how many samples are left of it. */
    template <typename NextCut>
    std::vector<float> play (NextCut&& nextCut)
    {
        std::vector<float> output;
        juce::Random noise (1);

        for (const auto& segment : session.segments)
        {
            juce::AudioBuffer<float> buffer (session.numChannels, segment.numSamples);
            fill (buffer, segment.sound, noise);
            begin (segment);

            for (auto position = 0, left = segment.numSamples; left >= 0;)
            {
                const auto length = juce::jlimit (0, left, nextCut (left));
                playBlock (buffer, position, length, segment.isPlaying);
                position += length;
                left -= length;

                if (left == 0)
                    break;
            }

            for (auto channel = 0; channel < buffer.getNumChannels(); ++channel)
                output.insert (output.end(), buffer.getReadPointer (channel),
                               buffer.getReadPointer (channel) + segment.numSamples);
        }

        return output;
    }

private:
    void begin (const Segment& segment)
    {
        const auto& parameters = harness.processor.getParameters();

        if (segment.parameter < parameters.size())
            parameters[segment.parameter]->setValueNotifyingHost (segment.normalisedValue);

        songPosition += segment.jump;
    }

    void playBlock (juce::AudioBuffer<float>& buffer, int start, int length, bool isPlaying)
    {
        auto position = cv::test::FakePlayHead::playingAt (songPosition);
        position.setIsPlaying (isPlaying);
        harness.playHead.position = position;

        juce::AudioBuffer<float> block (buffer.getArrayOfWritePointers(), buffer.getNumChannels(), start, length);
        juce::MidiBuffer midi;
        harness.processor.processBlock (block, midi);

        if (isPlaying)
            songPosition += length;
    }

    const Session& session;
    cv::test::ProcessorHarness harness;
    juce::int64 songPosition = 0;
};
} // namespace

/** The input is a session: layout, rate, and what moves and sounds when. */
int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size)
{
    auto& environment = cv::fuzz::Environment::get();
    const auto session = readSession ({ data, size });

    // Keeps what all instances share.
    static const cv::varlo::AudioPluginAudioProcessor another;

    const auto whole = Player (session).play ([] (int left) { return left; });
    juce::Random random ((juce::int64) size);
    const auto cut = Player (session).play ([&] (int left) { return random.nextInt (juce::jmin (left, 700) + 1); });

    for (const auto sample : whole)
        require (std::isfinite (sample) && std::abs (sample) <= outputLimit, "samples are finite and within 4");

    require (whole.size() == cut.size() && std::memcmp (whole.data(), cut.data(), whole.size() * sizeof (float)) == 0,
             "blocks of another length give the same samples");
    environment.deliverMessages();
    return 0;
}
