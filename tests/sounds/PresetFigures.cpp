#include "sounds/PresetDocument.h"
#include "sounds/PresetSound.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

#include <iostream>

namespace cv::varlo
{
namespace
{
juce::String toText (double value)
{
    // What rounds to nothing has no sign.
    const auto rounded = std::round (value * 10.0) / 10.0;
    return (rounded > 0.0 ? "+" : "") + juce::String (juce::exactlyEqual (rounded, 0.0) ? 0.0 : rounded, 1);
}

juce::StringArray measure (const juce::File& preset)
{
    PresetSound sound (preset);
    juce::StringArray peaks, loudness, tail;

    for (const auto recording : recordings)
    {
        const auto change = sound.play (recording);
        peaks.add (toText (change.peakDecibels));
        loudness.add (toText (change.loudness));

        if (recording == Recording::drums)
            tail.add (juce::String (sound.measureTail(), 1));
    }

    peaks.addArray (loudness);
    peaks.addArray (tail);
    return peaks;
}

/** Measures all presets and puts the figures into the document; false, with words, when that fails. */
bool updateDocument (const juce::File& file)
{
    PresetDocument document (file);

    for (const auto& preset : findPresets())
    {
        const auto name = preset.getFileNameWithoutExtension();

        if (! document.setFigures (name, measure (preset)))
        {
            std::cerr << "varlo_preset_figures: no row of figures for " << name << std::endl;
            return false;
        }
    }

    // Whatever went wrong has been told already.
    if (testing::UnitTest::GetInstance()->Failed())
        return false;

    if (file.replaceWithText (document.getText(), false, false, "\n"))
        return true;

    std::cerr << "varlo_preset_figures: can't write " << file.getFullPathName() << std::endl;
    return false;
}
} // namespace
} // namespace cv::varlo

/** Measures what docs/presets.md tells of the presets, and writes it there. */
int main (int argc, char** argv)
{
    testing::InitGoogleTest (&argc, argv);

    if (argc != 1)
    {
        std::cerr << "usage: varlo_preset_figures" << std::endl;
        return 2;
    }

    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    const cv::test::TemporaryHome home;
    return cv::varlo::updateDocument (cv::varlo::PresetDocument::getFile()) ? 0 : 1;
}
