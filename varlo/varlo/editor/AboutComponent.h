#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::pluginCore
{
class PluginProcessor;
}

namespace cv::varlo
{
/** A dark panel over the whole editor with the product's name, version and copyright and a link to the maker's
    web site. A click anywhere hides it. Message thread.
*/
class AboutComponent final : public juce::Component
{
public:
    using UrlOpener = std::function<void (const juce::URL&)>;

    /** The processor outlives the panel. */
    explicit AboutComponent (pluginCore::PluginProcessor&, UrlOpener openUrl = &juce::URL::launchInDefaultBrowser);

    ~AboutComponent() override;

    void mouseDown (const juce::MouseEvent&) override;
    void lookAndFeelChanged() override;
    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;

private:
    const juce::URL makersWebSite;
    const UrlOpener openUrlInBrowser;

    juce::Label nameLabel;
    juce::Label versionLabel;
    juce::Label copyrightLabel;
    juce::Label linkLabel;
    juce::Label spareLabel; // shares the copyright's place

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AboutComponent)
};
} // namespace cv::varlo
