#pragma once

#include "pluginCore/presetsBar/PresetsBar.h"
#include "support/FindComponent.h"
#include "support/FrameworkLookAndFeel.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

#include <vector>

namespace cv::test
{
/** A product with preset folders of its own and a bar, which is made when it is first asked for: after the
    test has filled the folders.
*/
class PresetsBarFixture : public testing::Test
{
protected:
    PresetsBarFixture() { product.initialise(); }

    /** Writes a preset, with "level" at this value, and makes the folders above it. */
    juce::File writePreset (const juce::File& bank, const juce::String& path, float level = 50.0f)
    {
        const auto file = bank.getChildFile (path);
        product.set ("level", level);
        file.getParentDirectory().createDirectory();
        EXPECT_TRUE (product.createStateXml (false)->writeTo (file));
        presets.setDirty (false);
        return file;
    }

    pluginCore::PresetsBar& getBar()
    {
        if (bar == nullptr)
            bar = std::make_unique<pluginCore::PresetsBar> (presets);

        return *bar;
    }

    juce::Button& previousButton()
    {
        return getChildWithId<juce::Button> (getBar(), pluginCore::PresetsBar::previousButtonId);
    }

    juce::Button& nextButton() { return getChildWithId<juce::Button> (getBar(), pluginCore::PresetsBar::nextButtonId); }

    juce::Button& presetsButton() { return *findComponent<juce::TextButton> (getBar()); }

    /** What the bar shows once all messages have come through. */
    juce::String getText()
    {
        presetsButton();
        bar->handleUpdateNowIfNeeded();
        return presetsButton().getButtonText();
    }

    /** Presses an arrow and returns the name of the preset that is current then. */
    juce::String click (juce::Button& arrow)
    {
        getBar().buttonClicked (&arrow);
        return presets.getCurrentPresetFile().getFileNameWithoutExtension();
    }

    void choose (int itemId) { pluginCore::PresetsBar::menuItemChosen (itemId, &getBar()); }

    /** The menu in lines, those of sub-menus indented:

            1 Save (off)          an item that can't be chosen
            ----                  a separator
            [User Presets]        a section
            Folder * >            a sub-menu that is ticked
              5 Echo *            an item that is ticked
    */
    std::vector<juce::String> getMenuLines()
    {
        std::vector<juce::String> lines;
        describe (getBar().getMenu(), {}, lines);
        return lines;
    }

    /** The menu without what stands in it always. */
    juce::String getPresetLines()
    {
        juce::StringArray presetLines;
        auto isPreset = false;

        for (const auto& line : getMenuLines())
        {
            if (isPreset)
                presetLines.add (line);

            isPreset = isPreset || line.contains ("Show presets location");
        }

        return presetLines.joinIntoString ("\n");
    }

    const FrameworkLookAndFeel lookAndFeel;
    const PresetSandbox sandbox;
    const juce::File userFolder = sandbox.getLocations().userFolder;
    const juce::File factoryFolder = sandbox.getLocations().factoryFolder;
    const juce::File designerFolder = sandbox.getLocations().designerFolder;
    const juce::File initFile = sandbox.getLocations().initPresetFile;

    TestProduct product { sandbox.getLocations() };
    pluginCore::PresetsManager& presets = product.getPresetsManager();
    std::unique_ptr<pluginCore::PresetsBar> bar;

private:
    static void describe (const juce::PopupMenu& menu, const juce::String& indent, std::vector<juce::String>& lines)
    {
        for (juce::PopupMenu::MenuItemIterator items (menu); items.next();)
        {
            const auto& item = items.getItem();
            const auto state = juce::String (item.isTicked ? " *" : "") + (item.isEnabled ? "" : " (off)");

            if (item.isSeparator)
                lines.push_back (indent + "----");
            else if (item.isSectionHeader)
                lines.push_back (indent + "[" + item.text + "]");
            else if (item.subMenu == nullptr)
                lines.push_back (indent + juce::String (item.itemID) + " " + item.text + state);
            else
            {
                lines.push_back (indent + item.text + state + " >");
                describe (*item.subMenu, indent + "  ", lines);
            }
        }
    }
};
} // namespace cv::test
