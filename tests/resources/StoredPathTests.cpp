#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
namespace
{
/** The block of an SVG file: the corners of its picture, then its paths, as JUCE reads them. */
juce::MemoryBlock makeBlock (const juce::XmlElement& svg)
{
    const auto corners = juce::StringArray::fromTokens (svg.getStringAttribute ("viewBox"), false);
    const juce::Rectangle<float> picture (corners[0].getFloatValue(), corners[1].getFloatValue(),
                                          corners[2].getFloatValue(), corners[3].getFloatValue());
    juce::Path whole;
    whole.startNewSubPath (picture.getTopLeft());
    whole.startNewSubPath (picture.getBottomRight());

    for (const auto* const path : svg.getChildWithTagNameIterator ("path"))
        whole.addPath (juce::Drawable::parseSVGPath (path->getStringAttribute ("d")));

    juce::MemoryOutputStream block;
    whole.writePathToStream (block);
    return block.getMemoryBlock();
}

class StoredPathTest : public testing::TestWithParam<const char*>
{
protected:
    juce::File getFile (const juce::String& extension) const
    {
        return juce::File (VARLO_RESOURCES).getChildFile ("icons").getChildFile (GetParam() + extension);
    }

    const std::unique_ptr<juce::XmlElement> svg = juce::parseXML (getFile (".svg"));
};

TEST_P (StoredPathTest, IsThatOfItsPicture)
{
    const auto expected = makeBlock (*svg);
    juce::MemoryBlock stored;
    ASSERT_TRUE (getFile (".path").loadFileAsData (stored));

    if (stored == expected)
        return;

    const auto made =
        juce::File::getSpecialLocation (juce::File::tempDirectory).getChildFile (getFile (".path").getFileName());
    EXPECT_TRUE (made.replaceWithData (expected.getData(), expected.getSize()));
    ADD_FAILURE() << "if the picture is as it should be: cp " << made.getFullPathName() << ' '
                  << getFile (".path").getFullPathName();
}

TEST_P (StoredPathTest, HoldsAllThatThePictureShows)
{
    for (const auto* const element : svg->getChildIterator())
    {
        EXPECT_TRUE (element->hasTagName ("path")) << element->getTagName();

        for (const auto* const attribute : { "transform", "style", "fill-rule" })
            EXPECT_FALSE (element->hasAttribute (attribute)) << attribute;
    }
}

INSTANTIATE_TEST_SUITE_P (Icons,
                          StoredPathTest,
                          testing::Values ("info", "logo", "redo", "undo"),
                          [] (const auto& tested) { return std::string (tested.param); });
} // namespace
} // namespace cv::test
