#include "varlo/editor/AboutComponent.h"

#include "pluginCore/processor/PluginProcessor.h"
#include "varlo/lookAndFeel/Markers.h"
#include "varlo/lookAndFeel/Palette.h"

namespace cv::varlo
{
AboutLayout layOutAboutPanel (int width, int height)
{
    const juce::Rectangle<int> panel (width, height);
    auto area = panel.reduced (panel.proportionOfHeight (0.03f));
    const auto largeStep = area.proportionOfHeight (0.1f);
    const auto lineHeight = area.proportionOfHeight (0.08f);

    AboutLayout layout;
    layout.copyright = area.removeFromBottom (area.proportionOfHeight (0.05f));

    // The space above the name is twice what is taken for it.
    area.removeFromTop (largeStep);
    area.translate (0, largeStep);
    layout.name = area.removeFromTop (3 * largeStep);

    // The version reaches into the name's area, whose text leaves room there.
    area.translate (0, -(largeStep / 3));
    layout.version = area.removeFromTop (lineHeight);

    area.removeFromTop (largeStep / 3);
    layout.link = area.removeFromTop (lineHeight);

    return layout;
}

juce::Rectangle<int> narrowToText (juce::Rectangle<int> linkArea, int textWidth)
{
    return linkArea.withSizeKeepingCentre (textWidth, linkArea.getHeight());
}

AboutComponent::AboutComponent (pluginCore::PluginProcessor& audioProcessor, UrlOpener openUrl)
    : makersWebSite (audioProcessor.getProductInfo().companyWebSite)
    , openUrlInBrowser (std::move (openUrl))
    , nameLabel ({}, audioProcessor.getName())
    , versionLabel ({}, audioProcessor.getVersionDisplayText())
    , copyrightLabel ({},
                      juce::String::charToString (0xa9) + " " + juce::String (audioProcessor.getReleaseYear()) + " "
                          + audioProcessor.getProductInfo().company)
    , linkLabel (makersWebSite.getDomain())
{
    setTitle (juce::translate ("About"));
    setWantsKeyboardFocus (true);

    for (auto* const label :
         std::initializer_list<juce::Label*> { &nameLabel, &versionLabel, &copyrightLabel, &linkLabel, &spareLabel })
    {
        label->setJustificationType (juce::Justification::centred);
        label->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (label);
    }

    nameLabel.getProperties().set (properties::brightTextProportion, 0.5);
    linkLabel.getProperties().set (properties::brightTextProportion, (double) 0.8f);

    for (auto* const label : std::initializer_list<juce::Label*> { &linkLabel, &spareLabel })
        label->setJustificationType (juce::Justification::left | juce::Justification::bottom);

    linkLabel.setMouseCursor (juce::MouseCursor::PointingHandCursor);
    linkLabel.setInterceptsMouseClicks (true, false);
    linkLabel.addMouseListener (this, false);
    linkLabel.onOpen = [this] { openWebSite(); };
    spareLabel.setAccessible (false);

    AboutComponent::colourChanged();
}

AboutComponent::~AboutComponent() = default;

void AboutComponent::mouseDown (const juce::MouseEvent& event)
{
    if (event.originalComponent == &linkLabel)
        openWebSite();
    else
        setVisible (false);
}

bool AboutComponent::keyPressed (const juce::KeyPress& key)
{
    if (key.isKeyCode (juce::KeyPress::tabKey))
    {
        moveKeyboardOn();
        return true;
    }

    if (key != juce::KeyPress::escapeKey && key != juce::KeyPress::returnKey)
        return false;

    setVisible (false);
    return true;
}

/** There is nothing but the link to go to; what the panel covers is out of reach. */
void AboutComponent::moveKeyboardOn()
{
    if (linkLabel.hasKeyboardFocus (false))
        grabKeyboardFocus();
    else
        linkLabel.grabKeyboardFocus();
}

void AboutComponent::openWebSite()
{
    openUrlInBrowser (makersWebSite);
    setVisible (false);
}

void AboutComponent::visibilityChanged()
{
    if (isShowing())
    {
        takeKeyboard();
    }
    else if (formerFocus != nullptr && formerFocus->isShowing())
    {
        formerFocus->grabKeyboardFocus();
        formerFocus = nullptr;
    }
}

/** Only from its neighbours: what the panel covers must not be moved by keys, but the host keeps what it has. */
void AboutComponent::takeKeyboard()
{
    auto* const focused = getCurrentlyFocusedComponent();

    if (focused != nullptr && getParentComponent() != nullptr && getParentComponent()->isParentOf (focused))
    {
        formerFocus = focused;
        grabKeyboardFocus();
    }
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
