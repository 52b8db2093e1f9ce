#pragma once

#include "varlo/editor/LinkLabel.h"

#include <functional>

namespace cv::pluginCore
{
class PluginProcessor;
}

namespace cv::varlo
{
/** Where the texts of the about panel lie. */
struct AboutLayout
{
    juce::Rectangle<int> name;
    juce::Rectangle<int> version;
    juce::Rectangle<int> link; // as wide as the panel, its height set
    juce::Rectangle<int> copyright;
};

/** For a panel of this size in logical pixels, neither below 0. No area has a negative size. */
AboutLayout layOutAboutPanel (int width, int height);

/** The link's area narrowed to its text, `textWidth` logical pixels wide, so that only the text can be clicked. */
juce::Rectangle<int> narrowToText (juce::Rectangle<int> linkArea, int textWidth);

/** A dark panel over the whole editor with the product's name, version and copyright and a link to the maker's
    web site. A click anywhere hides it, and so do Escape and Return. While it shows, the keyboard is with it. Message
    thread.
*/
class AboutComponent final : public juce::Component
{
public:
    using UrlOpener = std::function<void (const juce::URL&)>;

    /** The processor outlives the panel. */
    explicit AboutComponent (pluginCore::PluginProcessor&, UrlOpener openUrl = &juce::URL::launchInDefaultBrowser);

    ~AboutComponent() override;

    void mouseDown (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void visibilityChanged() override;
    void lookAndFeelChanged() override;
    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;

private:
    void openWebSite();
    void takeKeyboard();
    void moveKeyboardOn();

    const juce::URL makersWebSite;
    const UrlOpener openUrlInBrowser;

    juce::Label nameLabel;
    juce::Label versionLabel;
    juce::Label copyrightLabel;
    LinkLabel linkLabel;
    juce::Label spareLabel; // shares the copyright's place
    juce::Component::SafePointer<juce::Component> formerFocus;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AboutComponent)
};
} // namespace cv::varlo
