#include "soak/SoakPresets.h"

namespace cv::soak
{
void writePresets (const juce::File& home)
{
    constexpr auto numPresets = 7;
    const auto bank = home.getChildFile (".local/share/Corvane/Varlo/presets");

    for (auto i = 1; i <= numPresets; ++i)
    {
        const auto file =
            bank.getChildFile (i % 3 == 0 ? "More" : "").getChildFile ("Preset " + juce::String (i) + ".cvpreset");
        juce::String text ("<Varlo version=\"1.0.0\"><PARAMS>");

        const auto add = [&] (const char* id, double value)
        { text << "<PARAM id=\"" << id << "\" value=\"" << value << "\"/>"; };

        add ("degrade", 9.0 * i);
        add ("delay", 130.0 * i);
        add ("feedback", 12.0 * i);
        add ("lowpass", 1700.0 * i);
        add ("mix", 11.0 * i);
        add ("resonance", 8.0 * i);
        file.create();
        file.replaceWithText (text + "</PARAMS></Varlo>");
    }
}
} // namespace cv::soak
