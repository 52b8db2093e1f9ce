#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace cv::test
{
/** The audio path once more, as literally as it can be written: plain loops and plain arithmetic, one
    function per stage, nothing taken from the product or from JUCE. Slow and simple on purpose: it
    judges every faster way of computing the same samples, bit by bit.

    Denormals have to be flushed to zero around prepare() and process(), as they are in the plug-in.
*/
class LiteralModel
{
public:
    struct Values
    {
        float mixPercent, degradePercent, delayMilliseconds, feedbackPercent, lowpassHz, resonancePercent;
    };

    /** The play head of a host that is playing. */
    struct Position
    {
        std::int64_t timeInSamples = 0;
        std::optional<double> bpm;
        bool looping = false;
        bool hostIsLive = false;
    };

    void prepare (double rate, int samplesPerBlock, const Values&);

    /** Works in place on one or two channels; no position when the host isn't playing. */
    void process (std::vector<std::vector<float>>& channels, const Values&, const std::optional<Position>&);

    /** How often a jump of the play head has emptied what it remembers. */
    int getNumJumps() const { return numJumps; }

private:
    struct Ramp
    {
        float current = 0, target = 0, step = 0;
        int countdown = 0, length = 0;

        void setTarget (float);
        void setLength (double rate, double seconds);

        bool isRunning() const { return countdown > 0; }

        float next();
    };

    struct DelayLine
    {
        std::vector<float> memory = std::vector<float> (4);
        int writeIndex = 0;

        void clear() { *this = { std::vector<float> (memory.size()) }; }

        float writeAndRead (float input, float delaySamples);
    };

    struct Ladder
    {
        Ramp cutoff { 20.0f, 20.0f };
        float g = 0, a = 0, s0 = 0, s1 = 0, s2 = 0, s3 = 0;
        double rate = 0;

        void prepare (double newRate);
        void setCoefficients (float hz);
        float step (float x);
    };

    struct Limiter
    {
        float attack = 0, release = 0, envelope = 0;

        void prepare (double rate);
        float step (float x);
    };

    struct Lowpass
    {
        float requested = 0, s1 = 0, s2 = 0, g = 0, r2 = 0, h = 0;
        double rate = 0;
        Ramp cutoff, q;

        void prepare (double newRate);
        void setCutoff (float hz);
        void setTarget();
        void setCoefficients (float hz, float newQ);
        float step (float x);
    };

    struct Channel
    {
        float delaySeconds = 0, rate = 0, feedbackSample = 0, held = 0;
        int holdCounter = 0;
        DelayLine line;
        Ramp delay, loopGain;
        Ladder ladder;
        Limiter limiter;
        Lowpass lowpass;
    };

    void setParameters (const Values&);
    void setDegrade (float amount);
    bool hasJumped (int numSamples, const std::optional<Position>&);
    void clearMemories();
    static void runDelayLoop (Channel&, std::vector<float>&);
    void runDegrade (Channel&, std::vector<float>&) const;
    static void runLowpass (Channel&, std::vector<float>&);
    static void applyGain (Ramp&, std::vector<std::vector<float>>&);
    static float guard (float);

    double rate = 0;
    Ramp dryGain, wetGain;
    float degradeAmount = 0, degradeRate = 0;
    int holdLength = 0;
    std::array<Channel, 2> channels;
    std::int64_t previousTime = 0, lastTime = 0;
    double previousBpm = 0, lastBpm = 0;
    int largestBlock = 0;
    int numJumps = 0;
};
} // namespace cv::test
