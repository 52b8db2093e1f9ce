#include "varlo/editor/AboutLayout.h"

namespace cv::varlo
{
AboutLayout layOutAboutPanel (int width, int height)
{
    const juce::Rectangle<int> panel (width, height);
    auto area = panel.reduced (panel.proportionOfHeight (0.03f));
    const auto largeStep = area.proportionOfHeight (0.1f);
    const auto lineHeight = area.proportionOfHeight (0.08f);

    AboutLayout layout;
    layout.copyright = area.removeFromBottom (area.proportionOfHeight (0.05f));

    // The space above the name is twice what is taken for it.
    area.removeFromTop (largeStep);
    area.translate (0, largeStep);
    layout.name = area.removeFromTop (3 * largeStep);

    // The version reaches into the name's area, whose text leaves room there.
    area.translate (0, -(largeStep / 3));
    layout.version = area.removeFromTop (lineHeight);

    area.removeFromTop (largeStep / 3);
    layout.link = area.removeFromTop (lineHeight);

    return layout;
}

juce::Rectangle<int> narrowToText (juce::Rectangle<int> linkArea, int textWidth)
{
    return linkArea.withSizeKeepingCentre (textWidth, linkArea.getHeight());
}
} // namespace cv::varlo
