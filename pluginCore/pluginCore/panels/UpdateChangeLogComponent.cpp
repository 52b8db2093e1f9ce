#include "pluginCore/panels/UpdateChangeLogComponent.h"

#include "pluginCore/lookAndFeel/ColourIds.h"
#include "pluginCore/panels/ChangeLogText.h"

namespace cv::pluginCore
{
namespace
{
/** The width that a button would like to have for its text, up to a limit. A look-and-feel may fit the font
    into the width that the button has at the moment, so the button is given all there is to measure it.
*/
int measureWidth (juce::TextButton& button, int widthLimit, int height)
{
    button.setSize (widthLimit, height);
    return juce::jmin (button.getBestWidthForHeight (height), widthLimit);
}
} // namespace

juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box)
{
    constexpr auto marginProportion = 0.08f;

    return box.reduced (
        juce::jmin (box.proportionOfHeight (marginProportion), box.proportionOfWidth (marginProportion)));
}

int getChangeLogRowHeight (juce::Rectangle<int> contentArea)
{
    return contentArea.proportionOfHeight (0.12f);
}

ChangeLogLayout layOutChangeLog (juce::Rectangle<int> contentArea, int bestCloseWidth, int bestDownloadWidth)
{
    const auto rowHeight = getChangeLogRowHeight (contentArea);
    const auto gap = rowHeight / 3;
    auto remaining = contentArea;

    ChangeLogLayout layout;
    layout.title = remaining.removeFromTop (rowHeight);
    remaining.removeFromTop (gap);

    auto buttons = remaining.removeFromBottom (rowHeight);
    layout.closeButton = buttons.removeFromRight (bestCloseWidth);
    buttons.removeFromRight (rowHeight);
    layout.downloadButton = buttons.removeFromRight (bestDownloadWidth);

    remaining.removeFromBottom (gap);
    layout.textPanel = remaining;
    return layout;
}

UpdateChangeLogComponent::UpdateChangeLogComponent (UrlOpener openUrl)
    : openUrlInBrowser (std::move (openUrl))
    , titleLabel ({}, juce::translate ("An update is available") + ":")
    , downloadButton (juce::translate ("proceed to download page"))
    , closeButton (juce::translate ("close"))
{
    downloadButton.onClick = [this] { openDownloadPage(); };
    closeButton.onClick = [this] { close(); };
    setTitle (juce::translate ("An update is available"));
    getTextEditor().setTitle (getTitle());

    addAndMakeVisible (titleLabel);
    addAndMakeVisible (downloadButton);
    addAndMakeVisible (closeButton);
    addAndMakeVisible (textPanel);

    UpdateChangeLogComponent::colourChanged();
}

bool UpdateChangeLogComponent::setChangeLog (const juce::String& text)
{
    auto& textEditor = getTextEditor();
    const auto shown = getShownChangeLog (text, textEditor.getFont());

    if (shown.isEmpty())
        return false;

    textEditor.setText (shown, false);
    return true;
}

bool UpdateChangeLogComponent::keyPressed (const juce::KeyPress& key)
{
    if (key != juce::KeyPress::escapeKey)
        return false;

    close();
    return true;
}

void UpdateChangeLogComponent::close() const
{
    if (onClose != nullptr)
        onClose();
}

void UpdateChangeLogComponent::openDownloadPage()
{
    if (! downloadUrl.isEmpty() && openUrlInBrowser != nullptr)
        openUrlInBrowser (downloadUrl);

    if (onDownload != nullptr)
        onDownload();
}

void UpdateChangeLogComponent::paint (juce::Graphics& g)
{
    constexpr juce::uint8 backdropAlpha = 0x66;
    constexpr auto cornerProportion = 0.02f;

    const auto box = getLocalBounds().getProportion (boxArea).toFloat();

    g.fillAll (juce::Colours::black.withAlpha (backdropAlpha));
    g.setColour (findColour (changeLogBackgroundColourId));
    g.fillRoundedRectangle (box, std::trunc (cornerProportion * box.getHeight()));
}

void UpdateChangeLogComponent::resized()
{
    constexpr auto fontProportion = 0.5f;

    const auto contentArea = getChangeLogContentArea (getLocalBounds().getProportion (boxArea));
    const auto rowHeight = getChangeLogRowHeight (contentArea);
    const auto layout = layOutChangeLog (contentArea, measureWidth (closeButton, contentArea.getWidth(), rowHeight),
                                         measureWidth (downloadButton, contentArea.getWidth(), rowHeight));

    titleLabel.setBounds (layout.title);
    closeButton.setBounds (layout.closeButton);
    downloadButton.setBounds (layout.downloadButton);

    auto& textEditor = textPanel.getTextEditor();
    textEditor.applyFontToAllText (textEditor.getFont().withHeight (fontProportion * (float) rowHeight));
    textPanel.setBounds (layout.textPanel);
}

void UpdateChangeLogComponent::colourChanged()
{
    if (! isColourSpecified (changeLogBackgroundColourId)
        && ! getLookAndFeel().isColourSpecified (changeLogBackgroundColourId))
        return;

    const auto background = findColour (changeLogBackgroundColourId);
    textPanel.setColour (displayTextBackgroundColourId, background.darker (0.1f));
    textPanel.setColour (displayTextTextColourId, background.contrasting (0.8f));
}

void UpdateChangeLogComponent::lookAndFeelChanged()
{
    colourChanged();

    // The width of the buttons depends on the font.
    resized();
}
} // namespace cv::pluginCore
