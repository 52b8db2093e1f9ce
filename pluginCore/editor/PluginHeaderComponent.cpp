#include "editor/PluginHeaderComponent.h"

#include "lookAndFeel/ColourIds.h"
#include "lookAndFeel/Portion.h"

#include <PluginCoreResources.h>

namespace cv::pluginCore
{
PluginHeaderComponent::PluginHeaderComponent (PresetsManager& store, juce::UndoManager* manager)
    : presetsBar (store)
    , undoManager (manager)
{
    setOpaque (true);
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

    updateButtonImages();
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
    const auto background = findColour (headerBackgroundColourId);
    const auto normal = background.contrasting (0.8f);
    const auto down = background.contrasting (0.75f);
    const auto over = background.contrasting (0.65f);

    const auto update = [&] (juce::DrawableButton& button, const char* block, int numBytes)
    {
        juce::Path shape;
        shape.loadPathFromData (block, (size_t) numBytes);
        setButtonShape (button, shape, normal, down, over, over);
    };

    update (infoButton, resources::info_path, resources::info_pathSize);
    update (undoButton, resources::undo_path, resources::undo_pathSize);
    update (redoButton, resources::redo_path, resources::redo_pathSize);
}

void PluginHeaderComponent::setButtonShape (juce::DrawableButton& button,
                                            const juce::Path& shape,
                                            juce::Colour normal,
                                            juce::Colour down,
                                            juce::Colour over,
                                            juce::Colour normalOn)
{
    const auto createImage = [&shape] (juce::Colour colour)
    {
        auto image = std::make_unique<juce::DrawablePath>();
        image->setPath (shape);
        image->setFill (colour);
        return image;
    };

    const auto normalImage = createImage (normal);
    const auto downImage = createImage (down);
    const auto overImage = createImage (over);
    const auto normalOnImage = createImage (normalOn);

    button.setImages (normalImage.get(), overImage.get(), downImage.get(), downImage.get(), normalOnImage.get());
}

void PluginHeaderComponent::resized()
{
    if (auto* const methods = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
    {
        methods->positionHeaderComponents (*this, presetsBar, undoButton, redoButton, infoButton, logoButton);
        return;
    }

    const auto marginX = portion (0.03f, getWidth());
    const auto marginY = portion (0.1f, getHeight());
    const auto innerWidth = juce::jmax (getWidth() - 2 * marginX, 0);
    const auto innerHeight = juce::jmax (getHeight() - 2 * marginY, 0);

    const auto infoSpace = portion (0.2f, innerWidth);
    const auto logoWidth = juce::jmin (infoSpace / 2, innerWidth);
    logoButton.setBounds (marginX, marginY, logoWidth, innerHeight);

    const auto infoWidth = juce::jmin (innerWidth - logoWidth, infoSpace);
    infoButton.setBounds (innerWidth + marginX - infoWidth, marginY, infoWidth, innerHeight);

    presetsBar.setBounds (getPresetsBarArea());
}

juce::Rectangle<int> PluginHeaderComponent::getPresetsBarArea() const
{
    const auto outerX = portion (0.2f, getWidth());
    const auto outerY = portion (0.15f, getHeight());
    const auto width = juce::jmax (getWidth() - 2 * outerX, 0);
    const auto height = juce::jmax (getHeight() - 2 * outerY, 0);

    const auto x = portion (0.23f, width);
    const auto y = portion (0.1f, height);
    return { outerX + x, outerY + y, juce::jmax (width - 2 * x, 0), juce::jmax (height - 2 * y, 0) };
}

void PluginHeaderComponent::timerCallback()
{
    presetsBar.setArrowsVisible (isMouseOverOrDragging (true) && presetsBar.isEnabled());
}
} // namespace cv::pluginCore
