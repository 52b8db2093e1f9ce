#include "support/FakeDesktop.h"
#include "support/MessageLoop.h"
#include "support/PresetListenerLog.h"
#include "support/PresetsBarFixture.h"

namespace cv::pluginCore
{
namespace
{
using test::runMessageLoopUntil;

constexpr auto saveItem = 1;
constexpr auto saveAsItem = 2;
constexpr auto initItem = 3;
constexpr auto showLocationItem = 4;

class PresetsBarActionTest : public test::PresetsBarFixture
{
protected:
    /** The level that a preset file holds. */
    float readLevel (const juce::File& file)
    {
        test::TestProduct reader (sandbox.getLocations());
        reader.getPresetsManager().loadPreset (file);
        return reader.get ("level");
    }
};

TEST_F (PresetsBarActionTest, PresetItemsLoadPresets)
{
    writePreset (userFolder, "a.test", 1.0f);
    writePreset (userFolder, "b/c.test", 2.0f);
    writePreset (factoryFolder, "d.test", 3.0f);

    choose (6);
    EXPECT_FLOAT_EQ (product.get ("level"), 2.0f);
    EXPECT_EQ (getText(), "c");

    choose (7);
    EXPECT_FLOAT_EQ (product.get ("level"), 3.0f);
    EXPECT_EQ (getText(), "d");

    choose (5);
    EXPECT_EQ (getText(), "a");
}

TEST_F (PresetsBarActionTest, UnknownItemsDoNothing)
{
    presets.loadPreset (writePreset (userFolder, "a.test"));
    product.set ("level", 12.0f);
    getBar();
    test::PresetListenerLog log (presets);

    for (const auto item : { 6, 1000, std::numeric_limits<int>::max(), 0, -1, std::numeric_limits<int>::min() })
        choose (item);

    PresetsBar::menuItemChosen (5, nullptr);
    EXPECT_EQ (log.takeEvents(), "");
    EXPECT_FLOAT_EQ (product.get ("level"), 12.0f);
}

TEST_F (PresetsBarActionTest, SaveOverwritesTheCurrentPreset)
{
    const auto file = writePreset (userFolder, "a.test", 10.0f);
    presets.loadPreset (file);
    product.set ("level", 20.0f);
    EXPECT_EQ (getText(), "a*");

    test::PresetListenerLog log (presets);
    choose (saveItem);
    EXPECT_EQ (log.takeEvents(), "clean");
    EXPECT_EQ (getText(), "a");
    EXPECT_FLOAT_EQ (readLevel (file), 20.0f);
}

TEST_F (PresetsBarActionTest, SaveDoesNothingOnceThePresetHasGone)
{
    choose (saveItem);
    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());

    const auto file = writePreset (userFolder, "a.test");
    presets.loadPreset (file);
    product.set ("level", 20.0f);
    ASSERT_TRUE (file.deleteFile());
    choose (saveItem);
    EXPECT_FALSE (file.exists());
    EXPECT_TRUE (presets.isDirty());

    ASSERT_TRUE (file.createDirectory());
    choose (saveItem);
    EXPECT_TRUE (file.isDirectory());
    EXPECT_TRUE (presets.isDirty());
}

TEST_F (PresetsBarActionTest, InitLoadsTheInitPreset)
{
    writePreset (factoryFolder, "Init.test", 33.0f);
    product.set ("level", 1.0f);
    choose (initItem);
    EXPECT_FLOAT_EQ (product.get ("level"), 33.0f);
    EXPECT_EQ (getText(), "Init");
}

TEST_F (PresetsBarActionTest, SaveAsAsksForAFile)
{
    const test::FakeDesktop desktop;
    const auto findDialog = []() -> juce::Component*
    {
        for (auto i = 0; i < juce::Desktop::getInstance().getNumComponents(); ++i)
            if (auto* const component = juce::Desktop::getInstance().getComponent (i);
                component->getName() == "save...")
                return component;

        return nullptr;
    };

    ASSERT_EQ (findDialog(), nullptr);
    choose (saveAsItem);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return findDialog() != nullptr; }));

    findDialog()->exitModalState (0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return findDialog() == nullptr; }));
}

TEST_F (PresetsBarActionTest, ShowsTheUsersFolder)
{
    const test::FakeDesktop desktop;
    choose (showLocationItem);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return desktop.getOpenedPath() == userFolder.getFullPathName(); }));
}
} // namespace
} // namespace cv::pluginCore
