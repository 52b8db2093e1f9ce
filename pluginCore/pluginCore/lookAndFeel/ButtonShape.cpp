#include "pluginCore/lookAndFeel/ButtonShape.h"

namespace cv::pluginCore
{
void setButtonShape (juce::DrawableButton& button,
                     const juce::Path& shape,
                     juce::Colour normal,
                     juce::Colour down,
                     juce::Colour over,
                     juce::Colour normalOn)
{
    const auto createImage = [&shape] (juce::Colour colour)
    {
        auto image = std::make_unique<juce::DrawablePath>();
        image->setPath (shape);
        image->setFill (colour);
        return image;
    };

    const auto normalImage = createImage (normal);
    const auto downImage = createImage (down);
    const auto overImage = createImage (over);
    const auto normalOnImage = createImage (normalOn);

    button.setImages (normalImage.get(), overImage.get(), downImage.get(), downImage.get(), normalOnImage.get());
}
} // namespace cv::pluginCore
