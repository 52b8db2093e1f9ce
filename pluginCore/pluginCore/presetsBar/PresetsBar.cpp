#include "pluginCore/presetsBar/PresetsBar.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/lookAndFeel/ButtonShape.h"
#include "pluginCore/lookAndFeel/ColourIds.h"
#include "pluginCore/lookAndFeel/Markers.h"
#include "pluginCore/presetsBar/PresetTree.h"
#include "pluginCore/text/ShapeableText.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::pluginCore
{
namespace
{
enum MenuItemIds
{
    saveItemId = 1,
    saveAsItemId,
    initItemId,
    showLocationItemId,
    firstFreeItemId
};
} // namespace

juce::Path createChevronPath()
{
    juce::Path path;
    path.setUsingNonZeroWinding (true);

    path.startNewSubPath (2.330f, 7.954f);
    path.cubicTo (1.623f, 8.661f, 0.916f, 7.954f, 0.916f, 7.954f);
    path.cubicTo (0.916f, 7.954f, 0.209f, 7.247f, 0.916f, 6.540f);
    path.lineTo (7.280f, 0.176f);
    path.lineTo (0.916f, -6.188f);
    path.cubicTo (0.209f, -6.895f, 0.916f, -7.602f, 0.916f, -7.602f);
    path.cubicTo (0.916f, -7.602f, 1.623f, -8.309f, 2.330f, -7.602f);
    path.lineTo (9.401f, -0.531f);
    path.cubicTo (9.401f, -0.531f, 9.455f, -0.477f, 9.513f, -0.386f);
    path.cubicTo (9.636f, -0.221f, 9.694f, -0.060f, 9.704f, 0.091f);
    path.cubicTo (9.704f, 0.119f, 9.714f, 0.146f, 9.714f, 0.175f);
    path.cubicTo (9.713f, 0.204f, 9.714f, 0.232f, 9.704f, 0.260f);
    path.cubicTo (9.694f, 0.412f, 9.636f, 0.573f, 9.513f, 0.738f);
    path.cubicTo (9.452f, 0.826f, 9.401f, 0.883f, 9.401f, 0.883f);
    path.lineTo (2.330f, 7.954f);
    path.closeSubPath();

    return path;
}

PresetsBarLayout layOutPresetsBar (int width, int height) noexcept
{
    juce::Rectangle<int> bar (width, height);
    const auto previousButton = bar.removeFromLeft (height).reduced (0, height / 6);
    const auto nextButton = bar.removeFromRight (height);

    return { .previousButton = previousButton, .presetsButton = bar, .nextButton = nextButton };
}

PresetsBar::PresetsBar (PresetsManager& store) : presetsManager (store)
{
    setOpaque (true);
    presetsButton.setTriggeredOnMouseDown (true);

    previousButton.setComponentID (previousButtonId);
    nextButton.setComponentID (nextButtonId);

    // A look-and-feel can tell the bar's buttons from others by the one, and the name from the arrows by the other.
    getProperties().set (markers::presetsBar, true);
    presetsButton.getProperties().set ("PresetsButton", true);

    for (auto* const button : std::initializer_list<juce::Button*> { &previousButton, &nextButton, &presetsButton })
    {
        button->addListener (this);
        addAndMakeVisible (button);
    }

    previousButton.setTitle (juce::translate ("Previous preset"));
    previousButton.setTooltip (juce::translate ("Load the preset before the current one"));
    nextButton.setTitle (juce::translate ("Next preset"));
    nextButton.setTooltip (juce::translate ("Load the preset after the current one"));
    presetsButton.setTitle (juce::translate ("Presets"));
    presetsButton.setTooltip (juce::translate ("Click to open a menu"));
    setTabOrder();

    presetsManager.addListener (this);
    rebuildMenu();
    addMouseListener (this, true);
    colourChanged();
    triggerAsyncUpdate();
}

PresetsBar::~PresetsBar()
{
    presetsManager.removeListener (this);
    cancelPendingUpdate();
}

/** From left to right: the arrows lie a little lower than the button between them. */
void PresetsBar::setTabOrder()
{
    auto place = 0;

    for (auto* const button : std::initializer_list<juce::Button*> { &previousButton, &presetsButton, &nextButton })
        button->setExplicitFocusOrder (++place);
}

void PresetsBar::paint (juce::Graphics& g)
{
    g.setColour (findColour (presetsBarBackgroundColourId));
    g.fillRect (getLocalBounds());
}

void PresetsBar::colourChanged()
{
    const auto base = findColour (presetsBarBackgroundColourId);
    const auto normal = base.contrasting (0.3f);
    const auto down = base.contrasting (0.7f);
    const auto over = base.contrasting (0.5f);

    auto chevron = createChevronPath();
    setButtonShape (nextButton, chevron, normal, down, over, over);

    chevron.applyTransform (juce::AffineTransform::rotation (juce::MathConstants<float>::pi));
    setButtonShape (previousButton, chevron, normal, down, over, over);
}

void PresetsBar::resized()
{
    if (auto* const methods = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
    {
        methods->positionPresetsBar (*this, presetsButton, previousButton, nextButton);
        return;
    }

    const auto layout = layOutPresetsBar (getWidth(), getHeight());
    previousButton.setBounds (layout.previousButton);
    presetsButton.setBounds (layout.presetsButton);
    nextButton.setBounds (layout.nextButton);
}

void PresetsBar::rebuildMenu()
{
    const auto& locations = presetsManager.getLocations();

    presetsMenu.clear();
    presetPaths.clear();

    presetsMenu.addItem (saveItemId, juce::translate ("Save"), canOverwriteCurrentPreset());
    presetsMenu.addItem (saveAsItemId, juce::translate ("Save as") + "...");
    presetsMenu.addSeparator();

    if (isVisiblePreset (locations.initPresetFile, locations.presetExtension))
        presetsMenu.addItem (initItemId, juce::translate ("Init"));

    presetsMenu.addItem (showLocationItemId, juce::translate ("Show presets location") + "...");

    firstPresetItemId = firstFreeItemId;
    auto nextItemId = firstPresetItemId;
    addBankToMenu (locations.userFolder, "User Presets", nextItemId);
    addBankToMenu (locations.factoryFolder, presetsManager.getCompanyName() + " Presets", nextItemId);
    addBankToMenu (locations.designerFolder, "Designer Presets", nextItemId);
}

void PresetsBar::addBankToMenu (const juce::File& folder, const juce::String& title, int& nextItemId)
{
    const auto bank = readBank (folder, presetsManager.getLocations().presetExtension);

    if (! bank.holdsPresets)
        return;

    presetsMenu.addSectionHeader (juce::translate (title));
    addPresetsToMenu (presetsMenu, bank, nextItemId, presetPaths);
}

void PresetsBar::addPresetsToMenu (juce::PopupMenu& menu,
                                   const PresetTree& folder,
                                   int& nextItemId,
                                   juce::StringArray& paths)
{
    const auto& initPresetFile = presetsManager.getLocations().initPresetFile;
    const auto current = presetsManager.getCurrentPresetFile();

    for (const auto& child : folder.children)
    {
        if (child.isFolder)
        {
            juce::PopupMenu subMenu;
            addPresetsToMenu (subMenu, child, nextItemId, paths);
            menu.addSubMenu (getShapeableLine (child.file.getFileName()), subMenu, true, nullptr,
                             isBelowFolder (current, child.file));
        }
        else if (child.file != initPresetFile)
        {
            menu.addItem (nextItemId++, getShapeableLine (child.file.getFileNameWithoutExtension()), true,
                          child.file == current);
            paths.add (child.file.getFullPathName());
        }
    }
}

bool PresetsBar::canOverwriteCurrentPreset() const
{
    const auto current = presetsManager.getCurrentPresetFile();

    return current.existsAsFile() && isBelowFolder (current, presetsManager.getLocations().userFolder)
           && current.hasWriteAccess();
}

void PresetsBar::buttonClicked (juce::Button* button)
{
    if (button == &presetsButton)
        showMenu();
    else if (button == &previousButton)
        loadNeighbour (-1);
    else if (button == &nextButton)
        loadNeighbour (1);
}

void PresetsBar::showMenu()
{
    rebuildMenu();

    presetsMenu.showMenuAsync (juce::PopupMenu::Options()
                                   .withTargetComponent (presetsButton)
                                   .withParentComponent (findParentComponentOfClass<juce::AudioProcessorEditor>())
                                   .withStandardItemHeight (juce::roundToInt ((float) presetsButton.getHeight() * 0.7f))
                                   .withMinimumWidth (presetsButton.getWidth()),
                               juce::ModalCallbackFunction::forComponent (menuItemChosen, this));
}

void PresetsBar::loadNeighbour (int step)
{
    if (presetPaths.isEmpty())
        return;

    const auto index = presetPaths.indexOf (presetsManager.getCurrentPresetFile().getFullPathName());
    const auto target = index < 0 ? 0 : juce::negativeAwareModulo (index + step, presetPaths.size());
    presetsManager.loadPreset (juce::File (presetPaths[target]));
}

void PresetsBar::menuItemChosen (int result, PresetsBar* bar)
{
    if (result <= 0 || bar == nullptr)
        return;

    auto& store = bar->presetsManager;
    const auto current = store.getCurrentPresetFile();

    switch (result)
    {
        case saveItemId:
            // It may have vanished while the menu was open.
            if (current.existsAsFile())
                store.savePreset (current, false);
            break;
        case saveAsItemId:
            store.savePresetAs (true);
            break;
        case initItemId:
            store.loadPreset (store.getLocations().initPresetFile);
            break;
        case showLocationItemId:
            store.getLocations().userFolder.revealToUser();
            break;
        default:
            store.loadPreset (juce::File (bar->presetPaths[result - bar->firstPresetItemId]));
            break;
    }
}

void PresetsBar::setArrowsVisible (bool shouldBeVisible)
{
    if (previousButton.isVisible() == shouldBeVisible)
        return;

    previousButton.setVisible (shouldBeVisible);
    nextButton.setVisible (shouldBeVisible);
}

void PresetsBar::presetLoaded (PresetsManager&, const juce::File&)
{
    triggerAsyncUpdate();
}

void PresetsBar::dirtyStateChanged (PresetsManager&, bool)
{
    triggerAsyncUpdate();
}

void PresetsBar::handleAsyncUpdate()
{
    const auto current = presetsManager.getCurrentPresetFile();

    if (current == juce::File())
        return;

    presetsButton.setButtonText (getShapeableLine (current.getFileNameWithoutExtension())
                                 + (presetsManager.isDirty() ? "*" : ""));
    presetsButton.setTitle (juce::translate ("Presets") + ", " + presetsButton.getButtonText());
}
} // namespace cv::pluginCore
