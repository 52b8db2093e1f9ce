#include "soak/EditorActions.h"

#include "soak/MessageTurns.h"

namespace cv::soak
{
namespace
{
/** About what a hand needs from one movement to the next. */
constexpr auto handMilliseconds = 15;

constexpr auto minWidth = 500;
constexpr auto maxWidth = 1300;

juce::Point<int> toSize (int width)
{
    return { width, juce::roundToInt (width / EditorPlaces::aspectRatio) };
}
} // namespace

EditorActions::EditorActions (juce::AudioPluginInstance& pluginToUse,
                              const PluginActions& valuesToUse,
                              const render::DisplayConnection& displayToUse,
                              test::RealMouse& mouseToUse,
                              juce::Random& randomToUse)
    : plugin (pluginToUse)
    , values (valuesToUse)
    , display (displayToUse)
    , mouse (mouseToUse)
    , random (randomToUse)
{
}

bool EditorActions::open()
{
    // The host's window, the one that embeds another, and the plug-in's.
    constexpr auto numWindows = 3;

    frame = std::make_unique<render::EditorFrame> (plugin);
    frame->setTopLeftPosition (random.nextInt (200), random.nextInt (200));
    frame->show();
    return runMessagesUntil ([this] { return display.countVisibleLevels (frame->getWindowHandle()) >= numWindows; });
}

bool EditorActions::close()
{
    deliverSentMessages();
    frame = nullptr;
    runMessagesFor (random.nextInt (100));
    return true;
}

bool EditorActions::resize()
{
    const auto size = toSize (minWidth + random.nextInt (maxWidth - minWidth));
    frame->setEditorSize (size);
    runMessagesFor (50);
    return std::abs (frame->getWidth() - size.x) <= 2;
}

bool EditorActions::dragCorner()
{
    const auto former = frame->getWidth();
    const auto middle = (minWidth + maxWidth) / 2;
    const auto width = former > middle ? minWidth + random.nextInt (100) : maxWidth - random.nextInt (100);

    drag (getPlaces().corner.getCentre(), toSize (width) - toSize (former));
    return runMessagesUntil ([&] { return std::abs (frame->getWidth() - former) > 50; });
}

bool EditorActions::stepPreset()
{
    const auto places = getPlaces();
    return changesValues ([&] { click (random.nextBool() ? places.previousPreset : places.nextPreset); });
}

void EditorActions::openMenu()
{
    // A menu that has just opened takes no clicks.
    constexpr auto openingMilliseconds = 400;

    click (getPlaces().presetsButton);
    runMessagesFor (openingMilliseconds);
}

bool EditorActions::chooseFromMenu()
{
    // Above them stand five rows for saving, for the folder, the bank's title and a folder of presets.
    constexpr auto firstRow = 7;
    constexpr auto numRows = 3;
    constexpr auto rowProportion = 0.7;

    const auto button = getPlaces().presetsButton;
    const auto row = firstRow + random.nextInt (numRows);

    return changesValues (
        [&]
        {
            openMenu();
            moveTo ({ button.getCentreX(), button.getBottom() + (int) (row * rowProportion * button.getHeight()) });

            // The menu looks where the mouse is now and then.
            runMessagesFor (150);
            pressAndRelease();
        });
}

bool EditorActions::dismissMenu()
{
    const auto former = values.getValues();
    openMenu();
    click (getPlaces().spectrogram.removeFromLeft (20).removeFromBottom (20));
    runMessagesFor (100);
    return values.getValues() == former;
}

bool EditorActions::dragKnob()
{
    const auto start = getPlaces().knobs[(size_t) random.nextInt ((int) EditorPlaces::numKnobs)].getCentre();
    const auto distance = 20 + random.nextInt (100);

    // A knob that stands at its end moves the other way alone.
    const auto isMoved = [&] (int y) { return changesValues ([&] { drag (start, { 0, y }); }); };
    return random.nextBool() ? isMoved (distance) || isMoved (-distance) : isMoved (-distance) || isMoved (distance);
}

bool EditorActions::tap()
{
    constexpr auto numTaps = 3;
    const auto interval = 150 + random.nextInt (450);

    return changesValues (
        [&]
        {
            for (auto i = 0; i < numTaps; ++i)
            {
                click (getPlaces().tapButton);
                runMessagesFor (interval);
            }
        });
}

bool EditorActions::changesValues (const std::function<void()>& action) const
{
    const auto former = values.getValues();
    action();

    constexpr auto limitMilliseconds = 500;
    return runMessagesUntil ([&] { return values.getValues() != former; }, limitMilliseconds);
}

void EditorActions::moveTo (juce::Point<int> place)
{
    mouse.moveTo (frame->getWindowHandle(), place);
    runMessagesFor (handMilliseconds);
}

void EditorActions::click (juce::Rectangle<int> area)
{
    moveTo (area.getCentre());
    pressAndRelease();
}

void EditorActions::pressAndRelease()
{
    mouse.press();
    runMessagesFor (handMilliseconds);
    mouse.release();
    runMessagesFor (handMilliseconds);
}

void EditorActions::drag (juce::Point<int> start, juce::Point<int> distance)
{
    constexpr auto numSteps = 8;

    moveTo (start);
    mouse.press();
    runMessagesFor (handMilliseconds);

    for (auto i = 1; i <= numSteps; ++i)
        moveTo (start + distance * i / numSteps);

    mouse.release();
    runMessagesFor (handMilliseconds);
}
} // namespace cv::soak
