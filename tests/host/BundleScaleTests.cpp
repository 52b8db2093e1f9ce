#include "support/Rendering.h"
#include "support/TemporaryHome.h"
#include "support/TextSharpness.h"
#include "tools/render/DisplayConnection.h"

#include <gtest/gtest.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;

// Small enough for twice its size to lie on a usual screen.
constexpr int width = 600;
constexpr int height = 330;
const Area delayCaption { 80, 300, 70, 28 };

void runMessageLoopFor (int milliseconds)
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil (milliseconds);
}

/** A host's window around the built bundle's editor, as large as that. */
class EditorHost final : private juce::Component
{
public:
    explicit EditorHost (const render::DisplayConnection& displayToLookAt) : display (displayToLookAt)
    {
        juce::OwnedArray<juce::PluginDescription> descriptions;
        format.findAllTypesForFile (descriptions, VARLO_BUNDLE);

        juce::String error;
        plugin = format.createInstanceFromDescription (*descriptions.getFirst(), 44100.0, 512, error);
        editor.reset (plugin->createEditorIfNeeded());

        setOpaque (true);
        addAndMakeVisible (*editor);
        childBoundsChanged (editor.get());
        addToDesktop (0);
        setVisible (true);
        editor->setSize (width, height);
    }

    ~EditorHost() override
    {
        plugin->editorBeingDeleted (editor.get());
        editor.reset();
        runMessageLoopFor (100); // what closing has set going
    }

    /** Tells the bundle through the plug-in interface for it. */
    void setScale (float scale) { editor->setScaleFactor (scale); }

    /** The size that the bundle has asked for. */
    Area getEditorSize() const { return editor->getBounds().withZeroOrigin(); }

    /** What the screen shows of it once the bundle has asked for its size times `scale`, and nothing moves any more. */
    juce::Image capture (float scale)
    {
        constexpr auto settlingMilliseconds = 300, limitMilliseconds = 20000;
        juce::Image before, now;

        for (auto waited = 0; waited < limitMilliseconds; waited += settlingMilliseconds)
        {
            runMessageLoopFor (settlingMilliseconds);

            if (display.countVisibleLevels (getWindowHandle()) < 3)
                continue;

            now = display.capture (getWindowHandle());

            if (hasScale (scale) && now.getBounds() == getEditorSize() && test::areSame (before, now))
                break;

            before = now;
        }

        return now;
    }

    /** Whether the bundle has asked for its size times that, to the pixel. */
    bool hasScale (float scale) const
    {
        return std::abs ((float) getEditorSize().getWidth() - scale * (float) width) <= 1.0f
               && std::abs ((float) getEditorSize().getHeight() - scale * (float) height) <= 1.0f;
    }

private:
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::black); }

    void childBoundsChanged (juce::Component* child) override { setSize (child->getWidth(), child->getHeight()); }

    const test::TemporaryHome home;
    const render::DisplayConnection& display;
    juce::VST3PluginFormat format;
    std::unique_ptr<juce::AudioPluginInstance> plugin;
    std::unique_ptr<juce::AudioProcessorEditor> editor;
};

class BundleScaleTest : public testing::TestWithParam<float>
{
protected:
    const render::DisplayConnection display;
};

INSTANTIATE_TEST_SUITE_P (Scales, BundleScaleTest, testing::Values (1.0f, 1.25f, 1.5f, 2.0f));

TEST_P (BundleScaleTest, TheEditorIsAsLargeAndAsSharpAsTheHostAsks)
{
    EditorHost host (display);
    const auto unscaled = host.capture (1.0f);
    ASSERT_EQ (unscaled.getBounds(), Area (width, height));

    host.setScale (GetParam());
    const auto picture = host.capture (GetParam());

    EXPECT_TRUE (host.hasScale (GetParam())) << host.getEditorSize().toString();
    EXPECT_EQ (picture.getBounds(), host.getEditorSize());

    if (const auto* const folder = std::getenv ("VARLO_PICTURES"))
    {
        juce::FileOutputStream stream (juce::File (folder).getChildFile ("vst3-" + juce::String (GetParam()) + ".png"));
        juce::PNGImageFormat().writeImageToStream (picture, stream);
    }

    if (GetParam() > 1.0f)
    {
        EXPECT_TRUE (test::isSharp (picture, unscaled, delayCaption, GetParam()));
    }
}
} // namespace
} // namespace cv::varlo
