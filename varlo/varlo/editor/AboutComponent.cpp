#include "varlo/editor/AboutComponent.h"

#include "pluginCore/processor/PluginProcessor.h"
#include "varlo/editor/AboutLayout.h"
#include "varlo/lookAndFeel/Palette.h"

namespace cv::varlo
{
namespace
{
const juce::Identifier brightTextProportion { "gradYProp" };
} // namespace

AboutComponent::AboutComponent (pluginCore::PluginProcessor& audioProcessor, UrlOpener openUrl)
    : makersWebSite (audioProcessor.getProductInfo().companyWebSite)
    , openUrlInBrowser (std::move (openUrl))
    , nameLabel ({}, audioProcessor.getName())
    , versionLabel ({}, audioProcessor.getVersionDisplayText())
    , copyrightLabel ({},
                      juce::String::charToString (0xa9) + " " + juce::String (audioProcessor.getReleaseYear()) + " "
                          + audioProcessor.getProductInfo().company)
    , linkLabel ({}, makersWebSite.getDomain())
{
    for (auto* const label : { &nameLabel, &versionLabel, &copyrightLabel, &linkLabel, &spareLabel })
    {
        label->setJustificationType (juce::Justification::centred);
        label->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (label);
    }

    nameLabel.getProperties().set (brightTextProportion, 0.5);
    linkLabel.getProperties().set (brightTextProportion, (double) 0.8f);

    for (auto* const label : { &linkLabel, &spareLabel })
        label->setJustificationType (juce::Justification::left | juce::Justification::bottom);

    linkLabel.setMouseCursor (juce::MouseCursor::PointingHandCursor);
    linkLabel.setInterceptsMouseClicks (true, false);
    linkLabel.addMouseListener (this, false);

    AboutComponent::colourChanged();
}

AboutComponent::~AboutComponent() = default;

void AboutComponent::mouseDown (const juce::MouseEvent& event)
{
    if (event.originalComponent == &linkLabel)
        openUrlInBrowser (makersWebSite);

    setVisible (false);
}

void AboutComponent::lookAndFeelChanged()
{
    resized();
}

void AboutComponent::colourChanged()
{
    const auto accent = findColour (juce::Slider::thumbColourId);
    nameLabel.setColour (juce::Label::textColourId, accent);
    linkLabel.setColour (juce::Label::textColourId, accent);
}

void AboutComponent::paint (juce::Graphics& g)
{
    g.setColour (palette::aboutPanel);
    g.fillRect (getLocalBounds());
}

void AboutComponent::resized()
{
    const auto layout = layOutAboutPanel (getWidth(), getHeight());

    nameLabel.setBounds (layout.name);
    versionLabel.setBounds (layout.version);

    // The font follows the label's height, so that has to be there before the text is measured.
    linkLabel.setBounds (layout.link);
    const auto linkWidth =
        juce::GlyphArrangement::getStringWidth (getLookAndFeel().getLabelFont (linkLabel), linkLabel.getText());
    linkLabel.setBounds (narrowToText (layout.link, (int) std::ceil (linkWidth)));

    spareLabel.setBounds (layout.copyright);
    copyrightLabel.setBounds (layout.copyright);
}
} // namespace cv::varlo
