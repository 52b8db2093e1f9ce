#include "editor/AboutLayout.h"

#include "lookAndFeel/Portion.h"

namespace cv::varlo
{
AboutLayout layOutAboutPanel (int width, int height)
{
    using pluginCore::portion;

    const auto margin = portion (0.03f, height);
    const auto innerWidth = juce::jmax (width - 2 * margin, 0);
    auto heightLeft = juce::jmax (height - 2 * margin, 0);

    const auto takeHeight = [&heightLeft] (int wanted)
    {
        const auto taken = juce::jmin (wanted, heightLeft);
        heightLeft -= taken;
        return taken;
    };

    const auto largeStep = portion (0.1f, heightLeft);
    const auto lineHeight = portion (0.08f, heightLeft);
    const auto bottomLineHeight = juce::jmin (portion (0.05f, heightLeft), heightLeft);

    AboutLayout layout;
    layout.copyright = { margin, margin + heightLeft - bottomLineHeight, innerWidth, bottomLineHeight };
    takeHeight (bottomLineHeight);

    // The space above the name is twice what is taken for it.
    auto y = margin + largeStep + takeHeight (largeStep);

    layout.name = { margin, y, innerWidth, takeHeight (3 * largeStep) };

    // The version reaches into the name's area, whose text leaves room there.
    y += layout.name.getHeight() - largeStep / 3;
    layout.version = { margin, y, innerWidth, takeHeight (lineHeight) };

    y += layout.version.getHeight() + takeHeight (largeStep / 3);
    layout.link = { margin, y, innerWidth, takeHeight (lineHeight) };

    return layout;
}

juce::Rectangle<int> narrowToText (juce::Rectangle<int> linkArea, int textWidth)
{
    return { linkArea.getX() + (linkArea.getWidth() - textWidth) / 2, linkArea.getY(), textWidth,
             linkArea.getHeight() };
}
} // namespace cv::varlo
