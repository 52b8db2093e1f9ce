#include "pictures/Picture.h"

namespace cv::test
{
bool writePicture (juce::Component& component, const juce::File& file)
{
    constexpr auto pixelsPerUnit = 1.0f;

    const auto image = component.createComponentSnapshot (component.getLocalBounds(), true, pixelsPerUnit);
    file.deleteFile();
    juce::FileOutputStream stream (file);
    return stream.openedOk() && juce::PNGImageFormat().writeImageToStream (image, stream);
}
} // namespace cv::test
