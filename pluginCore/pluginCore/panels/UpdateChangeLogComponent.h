#pragma once

#include "pluginCore/panels/DisplayTextComponent.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::pluginCore
{
/** The part of the box that its contents may take. Any thread. */
juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box);

/** The height of a line of controls in that part, in logical pixels. Any thread. */
int getChangeLogRowHeight (juce::Rectangle<int> contentArea);

/** Where the parts of a change log go, in logical pixels; no size is negative. */
struct ChangeLogLayout
{
    juce::Rectangle<int> title;
    juce::Rectangle<int> textPanel;
    juce::Rectangle<int> downloadButton;
    juce::Rectangle<int> closeButton;
};

/** Puts the title on top, both buttons at the bottom right, "close" last, and the text between. The widths, 0
    or more, are those that the buttons would like to have; where there isn't room for both, the download
    button is cut. Any thread.
*/
ChangeLogLayout layOutChangeLog (juce::Rectangle<int> contentArea, int bestCloseWidth, int bestDownloadWidth);

/** Tells of a new version, on top of a whole editor that it dims: a box with the change log, a button that
    leads to the product's page and one that closes. It neither shows nor hides itself; that is for the owner
    of the two handlers. Its background is changeLogBackgroundColourId. Message thread.
*/
class UpdateChangeLogComponent final : public juce::Component
{
public:
    using UrlOpener = std::function<void (const juce::URL&)>;

    explicit UpdateChangeLogComponent (UrlOpener openUrl = &juce::URL::launchInDefaultBrowser);

    /** Called by the "close" button, if it is set. */
    std::function<void()> onClose;

    /** Called by the download button, if it is set, after the page has been opened. */
    std::function<void()> onDownload;

    /** The page that the download button opens; none if it is empty. */
    juce::URL downloadUrl;

    /** Takes a change log, whatever it holds and however long it is, and shows its beginning: as much as can
        be laid out while nobody notices, with an ellipsis behind it if that isn't all. False, and the text stays
        as it was, when there is nothing to show.
    */
    bool setChangeLog (const juce::String&);

    /** Holds what is shown of the change log. */
    juce::TextEditor& getTextEditor() noexcept { return textPanel.getTextEditor(); }

    /** Escape closes. */
    bool keyPressed (const juce::KeyPress&) override;

    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;
    void lookAndFeelChanged() override;

private:
    void close() const;
    void openDownloadPage();

    /** The box, in proportions of this component. */
    const juce::Rectangle<float> boxArea { 0.15f, 0.15f, 0.7f, 0.7f };

    const UrlOpener openUrlInBrowser;

    juce::Label titleLabel;
    juce::TextButton downloadButton;
    juce::TextButton closeButton;
    DisplayTextComponent textPanel;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (UpdateChangeLogComponent)
};
} // namespace cv::pluginCore
