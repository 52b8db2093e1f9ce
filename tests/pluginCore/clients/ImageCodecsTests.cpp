#include <gtest/gtest.h>
#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
namespace
{
juce::Image makePicture()
{
    juce::Image picture (juce::Image::ARGB, 5, 3, true);

    for (auto x = 0; x < picture.getWidth(); ++x)
        for (auto y = 0; y < picture.getHeight(); ++y)
            picture.setPixelAt (x, y, juce::Colour ((juce::uint8) (40 * x), (juce::uint8) (80 * y), 128, 1.0f));

    return picture;
}

TEST (ImageCodecs, PngPicturesAreReadAsTheyWereWritten)
{
    const auto picture = makePicture();
    juce::MemoryOutputStream file;
    ASSERT_TRUE (juce::PNGImageFormat().writeImageToStream (picture, file));

    const auto result = juce::ImageFileFormat::loadFrom (file.getData(), file.getDataSize());
    ASSERT_EQ (result.getBounds(), picture.getBounds());

    for (auto x = 0; x < picture.getWidth(); ++x)
        for (auto y = 0; y < picture.getHeight(); ++y)
            EXPECT_EQ (result.getPixelAt (x, y), picture.getPixelAt (x, y)) << x << ", " << y;
}

TEST (ImageCodecs, PngPicturesThatAreDamagedAreNoneOrHalf)
{
    juce::MemoryOutputStream file;
    ASSERT_TRUE (juce::PNGImageFormat().writeImageToStream (makePicture(), file));

    for (size_t length = 0; length < file.getDataSize(); ++length)
    {
        const auto result = juce::ImageFileFormat::loadFrom (file.getData(), length);
        EXPECT_TRUE (result.isNull() || result.getBounds() == makePicture().getBounds()) << length;
    }

    // Behind the signature and the length and name of the first part comes the width.
    constexpr auto widthPosition = 16;
    juce::MemoryBlock changed (file.getData(), file.getDataSize());
    changed[widthPosition + 3] = (char) 6;
    EXPECT_TRUE (juce::ImageFileFormat::loadFrom (changed.getData(), changed.getSize()).isNull());
}

#if CV_NO_JPEG
TEST (ImageCodecs, JpegPicturesAreNone)
{
    juce::MemoryBlock file (1000, true);
    const juce::uint8 start[] { 0xff, 0xd8, 0xff, 0xe0, 0x00, 0x10, 'J', 'F', 'I', 'F', 0x00 };
    file.copyFrom (start, 0, sizeof (start));

    for (auto i = 0; i < 3; ++i)
        EXPECT_TRUE (juce::ImageFileFormat::loadFrom (file.getData(), file.getSize()).isNull());

    juce::MemoryOutputStream written;
    juce::JPEGImageFormat().writeImageToStream (makePicture(), written);
    EXPECT_EQ (written.getDataSize(), 0u);
}
#endif
} // namespace
} // namespace cv::pluginCore
