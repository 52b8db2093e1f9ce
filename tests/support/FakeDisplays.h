#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

namespace cv::test
{
/** Puts displays side by side, from left to right, in the place of the real ones, for as long as it lives. */
class FakeDisplays
{
public:
    /** One display for each scale, all of one size in pixels. */
    explicit FakeDisplays (const std::vector<double>& scales, juce::Point<int> size = { widthPixels, 1000 })
    {
        displays.clear();

        for (const auto scale : scales)
        {
            juce::Displays::Display display {};
            display.isMain = displays.isEmpty();
            display.totalArea = { displays.size() * size.x, 0, size.x, size.y };
            display.userArea = display.totalArea;
            display.topLeftPhysical = display.totalArea.getPosition();
            display.scale = scale;
            displays.add (display);
        }
    }

    ~FakeDisplays() { displays = realDisplays; }

    static constexpr int widthPixels = 300;

private:
    juce::Array<juce::Displays::Display>& displays =
        const_cast<juce::Displays&> (juce::Desktop::getInstance().getDisplays()).displays;
    const juce::Array<juce::Displays::Display> realDisplays = displays;

    JUCE_DECLARE_NON_COPYABLE (FakeDisplays)
};
} // namespace cv::test
