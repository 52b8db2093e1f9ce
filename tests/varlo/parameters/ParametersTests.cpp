#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

#include <map>

namespace cv::varlo
{
namespace
{
using cv::test::makeNoise;
using cv::test::ProcessorHarness;

struct Contract
{
    const char* id;
    const char* name;
    float start, end, skew, defaultValue;
    const char* startText;
    const char* endText;
    const char* defaultText;
};

// Saved projects and automation stand on this table: it only ever grows.
constexpr std::array<Contract, 6> contract { {
    { "mix", "Mix", 0.0f, 100.0f, 1.0f, 50.0f, "0 %", "100 %", "50 %" },
    { "degrade", "Degrade", 0.0f, 100.0f, 1.0f, 0.0f, "0 %", "100 %", "0 %" },
    { "delay", "Delay", 1.0f, 10000.0f, 0.30091232f, 1000.0f, "1.0 ms", "10000.0 ms", "1000.0 ms" },
    { "feedback", "Feedback", 0.0f, 100.0f, 1.0f, 50.0f, "0 %", "100 %", "50 %" },
    { "lowpass", "Lowpass", 20.0f, 20000.0f, 0.29985148f, 5000.0f, "20 Hz", "20000 Hz", "5000 Hz" },
    { "resonance", "Resonance", 0.0f, 100.0f, 1.0f, 0.0f, "0 %", "100 %", "0 %" },
} };

TEST (Parameters, AreTheSixOfTheContractInHostOrder)
{
    ProcessorHarness harness;
    const auto& parameters = harness.processor.getParameters();
    ASSERT_EQ (parameters.size(), (int) contract.size());

    for (size_t i = 0; i < contract.size(); ++i)
    {
        SCOPED_TRACE (contract[i].id);
        const auto* parameter = dynamic_cast<juce::AudioParameterFloat*> (parameters[(int) i]);
        ASSERT_NE (parameter, nullptr);

        EXPECT_EQ (parameter->getParameterID(), contract[i].id);
        EXPECT_EQ (parameter->getVersionHint(), 1);
        EXPECT_EQ (parameter->getName (100), contract[i].name);
        EXPECT_EQ (parameter->range.start, contract[i].start);
        EXPECT_EQ (parameter->range.end, contract[i].end);
        EXPECT_EQ (parameter->range.interval, 0.0f);
        EXPECT_EQ (parameter->range.skew, contract[i].skew);
        EXPECT_FALSE (parameter->range.symmetricSkew);
        EXPECT_EQ (parameter->get(), contract[i].defaultValue);
        EXPECT_NEAR (parameters[(int) i]->getDefaultValue(), parameter->convertTo0to1 (contract[i].defaultValue),
                     1.0e-7f);
    }
}

TEST (Parameters, KeepTheDefaultAttributes)
{
    ProcessorHarness harness;

    for (const auto* parameter : harness.processor.getParameters())
    {
        EXPECT_EQ (parameter->getLabel(), "");
        EXPECT_EQ (parameter->getCategory(), juce::AudioProcessorParameter::genericParameter);
        EXPECT_TRUE (parameter->isAutomatable());
        EXPECT_FALSE (parameter->isMetaParameter());
        EXPECT_FALSE (parameter->isOrientationInverted());
        EXPECT_FALSE (parameter->isDiscrete());
    }
}

TEST (Parameters, ShowTheirValuesWithUnits)
{
    ProcessorHarness harness;

    for (const auto& row : contract)
    {
        const juce::RangedAudioParameter& parameter = harness.parameter (row.id);
        EXPECT_EQ (parameter.getText (0.0f, 0), row.startText);
        EXPECT_EQ (parameter.getText (1.0f, 0), row.endText);
        EXPECT_EQ (parameter.getCurrentValueAsText(), row.defaultText);
    }
}

TEST (Parameters, SkewPutsTheMiddleAt1000MillisecondsAnd2000Hertz)
{
    ProcessorHarness harness;
    EXPECT_NEAR (harness.parameter ("delay").convertTo0to1 (1000.0f), 0.5f, 1.0e-6f);
    EXPECT_NEAR (harness.parameter ("lowpass").convertTo0to1 (2000.0f), 0.5f, 1.0e-6f);

    const juce::RangedAudioParameter& lowpass = harness.parameter ("lowpass");
    EXPECT_NEAR (lowpass.getDefaultValue(), 0.6593f, 5.0e-5f);
}

TEST (Parameters, SkewsFollowFromTheirMiddles)
{
    EXPECT_NEAR (std::log (0.5) / std::log (999.0 / 9999.0), 0.30091232, 1.5e-8);
    EXPECT_NEAR (std::log (0.5) / std::log (1980.0 / 19980.0), 0.29985148, 1.5e-8);
}

TEST (Parameters, TextIsReadFromTheNumberAtItsStart)
{
    ProcessorHarness harness;
    const juce::RangedAudioParameter& delay = harness.parameter ("delay");

    for (const auto* text : { "250 ms", "250", "250 anything" })
        EXPECT_NEAR (delay.convertFrom0to1 (delay.getValueForText (text)), 250.0f, 0.01f) << text;
}

TEST (Parameters, TextBeyondTheRangeIsLimited)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE's range asserts on what it limits; builds without assertions check this.";
#else
    ProcessorHarness harness;
    const auto typed = [&harness] (const char* id, const char* text)
    {
        const juce::RangedAudioParameter& parameter = harness.parameter (id);
        return parameter.convertFrom0to1 (parameter.getValueForText (text));
    };

    EXPECT_EQ (typed ("delay", "no number"), 1.0f);
    EXPECT_EQ (typed ("lowpass", ""), 20.0f);
    EXPECT_EQ (typed ("mix", "no number"), 0.0f);
    EXPECT_EQ (typed ("delay", "99999"), 10000.0f);
    EXPECT_EQ (typed ("mix", "-5"), 0.0f);
#endif
}

/** Where a parameter stands, in the parameter itself, in the tree and for the sound. */
void expectStart (ProcessorHarness& harness, const Contract& row, const char* cause)
{
    EXPECT_EQ (harness.parameter (row.id).get(), row.start) << row.id << ' ' << cause;
    EXPECT_EQ (harness.processor.getValueTreeState().getRawParameterValue (row.id)->load(), row.start) << row.id;

    const auto state = harness.processor.getValueTreeState().copyState();
    EXPECT_EQ ((float) state.getChildWithProperty ("id", row.id)["value"], row.start) << row.id << ' ' << cause;
}

TEST (Parameters, TextThatIsNoNumberNeverArrives)
{
    ProcessorHarness harness;

    for (const auto& row : contract)
        for (const auto* text : { "nan", "NaN", "-nan", "+nan %", " nAn" })
        {
            juce::AudioProcessorParameter& parameter = harness.parameter (row.id);
            parameter.setValueNotifyingHost (0.5f);
            parameter.setValueNotifyingHost (parameter.getValueForText (text));
            expectStart (harness, row, text);
        }
}

TEST (Parameters, InfinityIsLimitedAsText)
{
    ProcessorHarness harness;

    for (const auto& row : contract)
    {
        juce::AudioProcessorParameter& parameter = harness.parameter (row.id);
        EXPECT_EQ (parameter.getValueForText ("inf"), 1.0f) << row.id;
        EXPECT_EQ (parameter.getValueForText ("-infinity"), 0.0f) << row.id;
        EXPECT_EQ (parameter.getValueForText ("1e999"), 1.0f) << row.id;
    }
}

TEST (Parameters, HostThatSendsNoNumberLeavesOneAndTheSound)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE's range asserts on what it limits; builds without assertions check this.";
#else
    ProcessorHarness harness;
    harness.prepare();
    harness.render (makeNoise (2, 512, 0.5f));

    for (const auto& row : contract)
    {
        juce::AudioProcessorParameter& parameter = harness.parameter (row.id);
        parameter.setValueNotifyingHost (0.5f);
        parameter.setValueNotifyingHost (std::numeric_limits<float>::quiet_NaN());
        expectStart (harness, row, "host");

        parameter.setValueNotifyingHost (std::numeric_limits<float>::infinity());
        EXPECT_EQ (harness.parameter (row.id).get(), row.end) << row.id;

        parameter.setValueNotifyingHost (-std::numeric_limits<float>::infinity());
        EXPECT_EQ (harness.parameter (row.id).get(), row.start) << row.id;
    }

    // Mix stands at 0: what goes in comes out.
    const auto input = makeNoise (2, 4096, 0.5f);
    const auto output = harness.render (input);
    EXPECT_EQ (output.getSample (1, 4095), input.getSample (1, 4095));
#endif
}

/** A processor whose parameters have the product's names and JUCE's own ranges, which let NaN through. */
class PlainParameters
{
public:
    PlainParameters() : tree (processor, nullptr, "PLAIN", createLayout()), parameters (tree) {}

    void setAll (float value)
    {
        for (const auto& row : contract)
            set (row.id, value);
    }

    void set (const char* id, float value)
    {
        *dynamic_cast<juce::AudioParameterFloat*> (tree.getParameter (id)) = value;
    }

    ParameterValues getValues() const { return parameters.getValues(); }

private:
    static juce::AudioProcessorValueTreeState::ParameterLayout createLayout()
    {
        juce::AudioProcessorValueTreeState::ParameterLayout layout;

        for (const auto& row : contract)
            layout.add (std::make_unique<juce::AudioParameterFloat> (juce::ParameterID (row.id, 1), row.name, 0.0f,
                                                                     20000.0f, 1.0f));

        return layout;
    }

    juce::AudioProcessorGraph processor; // has no parameters of its own
    juce::AudioProcessorValueTreeState tree;
    const Parameters parameters;
};

TEST (Parameters, EachValueIsThatOfItsOwnParameter)
{
    PlainParameters plain;

    const std::map<std::string, float ParameterValues::*> members {
        { "mix", &ParameterValues::mixPercent },          { "degrade", &ParameterValues::degradePercent },
        { "delay", &ParameterValues::delayMilliseconds }, { "feedback", &ParameterValues::feedbackPercent },
        { "lowpass", &ParameterValues::lowpassHz },       { "resonance", &ParameterValues::resonancePercent }
    };

    ASSERT_EQ (members.size(), contract.size());

    for (const auto& [changedId, changedMember] : members)
    {
        plain.setAll (1.0f);
        plain.set (changedId.c_str(), 33.0f);

        for (const auto& [id, member] : members)
            EXPECT_NEAR (plain.getValues().*member, member == changedMember ? 33.0f : 1.0f, 0.01f)
                << changedId << " changed, " << id << " read";
    }
}

TEST (Parameters, WhatIsNoNumberReadsAsTheDefault)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE's range asserts on NaN";
#endif

    PlainParameters plain;
    plain.setAll (33.0f);
    EXPECT_NEAR (plain.getValues().lowpassHz, 33.0f, 0.01f);

    plain.setAll (std::numeric_limits<float>::quiet_NaN());
    const auto values = plain.getValues();
    EXPECT_EQ (values.mixPercent, 50.0f);
    EXPECT_EQ (values.degradePercent, 0.0f);
    EXPECT_EQ (values.delayMilliseconds, 1000.0f);
    EXPECT_EQ (values.feedbackPercent, 50.0f);
    EXPECT_EQ (values.lowpassHz, 5000.0f);
    EXPECT_EQ (values.resonancePercent, 0.0f);
}
} // namespace
} // namespace cv::varlo
