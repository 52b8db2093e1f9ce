#include "pluginCore/editor/PluginHeaderComponent.h"

#include "pluginCore/lookAndFeel/ButtonShape.h"
#include "pluginCore/lookAndFeel/ColourIds.h"
#include "pluginCore/lookAndFeel/Markers.h"

#include <PluginCoreResources.h>

namespace cv::pluginCore
{
namespace
{
/** The area without margins that are proportions of its width, at the sides, and of its height. */
juce::Rectangle<int> withoutMargins (juce::Rectangle<int> area, float atSides, float aboveAndBelow)
{
    return area.reduced (area.proportionOfWidth (atSides), area.proportionOfHeight (aboveAndBelow));
}
} // namespace

PluginHeaderComponent::PluginHeaderComponent (PresetsManager& store, juce::UndoManager* manager)
    : presetsBar (store)
    , undoManager (manager)
{
    setOpaque (true);
    getProperties().set (markers::sameButtonFont, true);
    addAndMakeVisible (presetsBar);

    undoButton.onClick = [this]
    {
        if (undoManager != nullptr)
            undoManager->undo();
    };
    redoButton.onClick = [this]
    {
        if (undoManager != nullptr)
            undoManager->redo();
    };
    logoButton.onClick = infoButton.onClick = [this]
    {
        if (onLogoClicked)
            onLogoClicked();
    };

    for (auto* const button : { &undoButton, &redoButton, &infoButton, &logoButton })
    {
        button->setTriggeredOnMouseDown (true);
        addAndMakeVisible (button);
    }

    nameButtons();
    updateButtonImages();
}

/** For those who don't see them, in the order of the Tab key. */
void PluginHeaderComponent::nameButtons()
{
    logoButton.setTitle (juce::translate ("About"));
    logoButton.setTooltip (juce::translate ("Show the version and the maker"));
    infoButton.setTitle (logoButton.getTitle());
    infoButton.setTooltip (logoButton.getTooltip());
    undoButton.setTitle (juce::translate ("Undo"));
    undoButton.setTooltip (juce::translate ("Undo the last change"));
    redoButton.setTitle (juce::translate ("Redo"));
    redoButton.setTooltip (juce::translate ("Redo the change that was undone last"));

    auto place = 0;

    for (auto* const component :
         std::initializer_list<juce::Component*> { &logoButton, &undoButton, &redoButton, &presetsBar, &infoButton })
        component->setExplicitFocusOrder (++place);
}

PluginHeaderComponent::~PluginHeaderComponent() = default;

void PluginHeaderComponent::paint (juce::Graphics& g)
{
    g.setColour (findColour (headerBackgroundColourId));
    g.fillRect (getLocalBounds());
}

void PluginHeaderComponent::colourChanged()
{
    updateButtonImages();
}

void PluginHeaderComponent::updateButtonImages()
{
    setIcon (infoButton, resources::info_path, resources::info_pathSize);
    setIcon (undoButton, resources::undo_path, resources::undo_pathSize);
    setIcon (redoButton, resources::redo_path, resources::redo_pathSize);
}

void PluginHeaderComponent::setIcon (juce::DrawableButton& button, const char* path, int numBytes) const
{
    const auto background = findColour (headerBackgroundColourId);
    const auto over = background.contrasting (0.65f);

    juce::Path shape;
    shape.loadPathFromData (path, (size_t) numBytes);
    setButtonShape (button, shape, background.contrasting (0.8f), background.contrasting (0.75f), over, over);
}

void PluginHeaderComponent::setLogo (const char* path, int numBytes)
{
    setIcon (logoButton, path, numBytes);
}

void PluginHeaderComponent::resized()
{
    if (auto* const methods = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
        methods->positionHeaderComponents (*this, presetsBar, undoButton, redoButton, infoButton, logoButton);
    else
        positionComponents();

    // A look-and-feel may give these two no place.
    for (auto* const button : { &undoButton, &redoButton })
    {
        button->setWantsKeyboardFocus (! button->getBounds().isEmpty());
        button->setAccessible (! button->getBounds().isEmpty());
    }
}

void PluginHeaderComponent::positionComponents()
{
    auto area = withoutMargins (getLocalBounds(), 0.03f, 0.1f);
    const auto infoWidth = area.proportionOfWidth (0.2f);
    logoButton.setBounds (area.removeFromLeft (infoWidth / 2));
    infoButton.setBounds (area.removeFromRight (infoWidth));
    presetsBar.setBounds (getPresetsBarArea());
}

juce::Rectangle<int> PluginHeaderComponent::getPresetsBarArea() const
{
    return withoutMargins (withoutMargins (getLocalBounds(), 0.2f, 0.15f), 0.23f, 0.1f);
}

void PluginHeaderComponent::timerCallback()
{
    presetsBar.setArrowsVisible (isMouseOverOrDragging (true) && presetsBar.isEnabled());
}
} // namespace cv::pluginCore
