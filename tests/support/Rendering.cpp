#include "support/Rendering.h"

namespace cv::test
{
juce::Image render (int width, int height, const std::function<void (juce::Graphics&)>& draw)
{
    juce::Image image (juce::Image::ARGB, width, height, true, juce::SoftwareImageType());
    juce::Graphics g (image);
    draw (g);
    return image;
}

juce::Image render (juce::Component& component)
{
    return render (component.getWidth(), component.getHeight(),
                   [&] (juce::Graphics& g) { component.paintEntireComponent (g, true); });
}

juce::Rectangle<int> getAreaWhere (const juce::Image& image, const std::function<bool (juce::Colour)>& condition)
{
    juce::Rectangle<int> area;

    for (auto y = 0; y < image.getHeight(); ++y)
        for (auto x = 0; x < image.getWidth(); ++x)
            if (condition (image.getPixelAt (x, y)))
                area = area.isEmpty() ? juce::Rectangle (x, y, 1, 1) : area.getUnion ({ x, y, 1, 1 });

    return area;
}

juce::Rectangle<int> getInkArea (const juce::Image& image)
{
    return getAreaWhere (image, [] (juce::Colour colour) { return ! colour.isTransparent(); });
}

juce::Rectangle<int> getAreaOf (const juce::Image& image, juce::Colour colour)
{
    return getAreaWhere (image, [=] (juce::Colour other) { return other == colour; });
}

juce::Rectangle<int> getTextArea (const juce::Image& image, juce::Colour colour)
{
    // Few pixels of a letter are fully covered, and nearly transparent ones don't hold their colour well.
    constexpr auto leastAlpha = 64, tolerance = 8;

    const auto isNear = [] (juce::uint8 first, juce::uint8 second) { return std::abs (first - second) <= tolerance; };

    return getAreaWhere (image,
                         [&] (juce::Colour pixel)
                         {
                             return pixel.getAlpha() >= leastAlpha && isNear (pixel.getRed(), colour.getRed())
                                    && isNear (pixel.getGreen(), colour.getGreen())
                                    && isNear (pixel.getBlue(), colour.getBlue());
                         });
}

juce::Colour asDrawn (juce::Colour colour)
{
    return render (1, 1, [&] (juce::Graphics& g) { g.fillAll (colour); }).getPixelAt (0, 0);
}

int getGreatestAlpha (const juce::Image& image, juce::Rectangle<int> area)
{
    auto greatest = 0;

    for (auto y = area.getY(); y < area.getBottom(); ++y)
        for (auto x = area.getX(); x < area.getRight(); ++x)
            greatest = juce::jmax (greatest, (int) image.getPixelAt (x, y).getAlpha());

    return greatest;
}

bool areSame (const juce::Image& first, const juce::Image& second)
{
    if (first.getBounds() != second.getBounds())
        return false;

    for (auto y = 0; y < first.getHeight(); ++y)
        for (auto x = 0; x < first.getWidth(); ++x)
            if (first.getPixelAt (x, y) != second.getPixelAt (x, y))
                return false;

    return true;
}
} // namespace cv::test
