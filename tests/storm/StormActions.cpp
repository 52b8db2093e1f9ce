#include "soak/EditorPlaces.h"
#include "soak/MessageTurns.h"
#include "storm/Storm.h"

namespace cv::storm
{
namespace
{
/** About what a hand needs from one movement to the next. */
constexpr auto handMilliseconds = 5;
} // namespace

bool Storm::create()
{
    auto& instance = instances[pickIndex()];

    if (instance.get() != nullptr)
        return false;

    instance.replace (createPlugin());
    return true;
}

bool Storm::destroy()
{
    const auto index = pickIndex();

    if (instances[index].get() == nullptr)
        return false;

    // With the editor open as well.
    soak::deliverSentMessages();
    std::erase_if (editors, [&] (const auto& editor) { return editor.instance == index; });
    instances[index].replace (nullptr);
    return true;
}

bool Storm::destroyAll()
{
    empty();
    fill();
    return true;
}

void Storm::prepare (Instance& instance)
{
    constexpr std::array rates { 22050.0, 44100.0, 48000.0, 96000.0, 192000.0 };
    constexpr auto maxPowerOfTwo = 10;

    instance.prepare (rates[(size_t) random.nextInt ((int) rates.size())], 1 << random.nextInt (maxPowerOfTwo + 1));
}

bool Storm::prepare()
{
    auto& instance = instances[pickIndex()];

    if (instance.get() == nullptr)
        return false;

    prepare (instance);
    return true;
}

bool Storm::release()
{
    auto& instance = instances[pickIndex()];

    if (instance.get() == nullptr)
        return false;

    instance.release();
    return true;
}

bool Storm::saveState()
{
    constexpr size_t maxNumStates = 32;
    auto* const plugin = pickPlugin();

    if (plugin == nullptr)
        return false;

    juce::MemoryBlock state;
    plugin->getStateInformation (state);

    if (states.size() < maxNumStates)
        states.push_back (std::move (state));
    else
        states[(size_t) random.nextInt ((int) maxNumStates)] = std::move (state);

    return true;
}

bool Storm::restoreState()
{
    auto* const plugin = pickPlugin();

    if (plugin == nullptr || states.empty())
        return false;

    const auto& state = states[(size_t) random.nextInt ((int) states.size())];
    plugin->setStateInformation (state.getData(), (int) state.getSize());
    return true;
}

bool Storm::moveParameters()
{
    auto* const plugin = pickPlugin();

    if (plugin == nullptr)
        return false;

    for (auto* parameter : plugin->getParameters())
        parameter->setValue (random.nextFloat());

    return true;
}

bool Storm::openEditor()
{
    const auto index = pickIndex();
    auto* const plugin = instances[index].get();

    if (plugin == nullptr || plugin->getActiveEditor() != nullptr || editors.size() >= (size_t) options.numEditors)
        return false;

    auto frame = std::make_unique<render::EditorFrame> (*plugin);
    frame->setTopLeftPosition (random.nextInt (800), random.nextInt (600));
    frame->show();
    editors.push_back ({ index, std::move (frame) });
    return true;
}

bool Storm::closeEditor()
{
    if (editors.empty())
        return false;

    soak::deliverSentMessages();
    editors.erase (editors.begin() + random.nextInt ((int) editors.size()));
    return true;
}

void Storm::enterMidst (const render::EditorFrame& frame)
{
    constexpr auto openingMilliseconds = 400;
    constexpr auto numMidsts = 4;
    const soak::EditorPlaces places (frame.getWidth(), frame.getHeight());

    switch (random.nextInt (numMidsts))
    {
        case 0: // a knob that is held
            mouse.moveTo (frame.getWindowHandle(), places.knobs[0].getCentre());
            mouse.press();
            soak::runMessagesFor (handMilliseconds);
            mouse.moveTo (frame.getWindowHandle(), places.knobs[0].getCentre().translated (0, 10));
            break;

        case 1: // the panel over all, which the logo brings
            clickAt (frame, { frame.getWidth() / 15, frame.getHeight() / 17 });
            break;

        case 2: // the menu, on its way or there
            clickAt (frame, places.presetsButton.getCentre());
            soak::runMessagesFor (random.nextInt (openingMilliseconds));
            break;

        default: // a dialog, or whatever else an item of the menu brings
            clickAt (frame, places.presetsButton.getCentre());
            soak::runMessagesFor (openingMilliseconds);
            clickAt (frame, places.presetsButton.getCentre().translated (
                                0, random.nextInt (4 * places.presetsButton.getHeight() + 1)));
            soak::runMessagesFor (random.nextInt (openingMilliseconds));
            break;
    }
}

bool Storm::leaveInTheMidst()
{
    if (editors.empty())
        return false;

    const auto chosen = editors.begin() + random.nextInt ((int) editors.size());
    auto& instance = instances[chosen->instance];
    chosen->frame->toFront (false);
    enterMidst (*chosen->frame);

    soak::deliverSentMessages();
    editors.erase (chosen);

    if (random.nextBool())
        instance.replace (nullptr);

    mouse.release();
    return true;
}

bool Storm::resizeEditor()
{
    auto* const frame = pickEditor();

    if (frame == nullptr)
        return false;

    frame->setEditorSize ({ 100 + random.nextInt (1400), 50 + random.nextInt (900) });
    return true;
}

bool Storm::click()
{
    auto* const frame = pickEditor();

    if (frame == nullptr)
        return false;

    clickAt (*frame, { random.nextInt (frame->getWidth()), random.nextInt (frame->getHeight()) });
    return true;
}

void Storm::clickAt (const render::EditorFrame& frame, juce::Point<int> place)
{
    mouse.moveTo (frame.getWindowHandle(), place);
    soak::runMessagesFor (handMilliseconds);
    mouse.press();
    soak::runMessagesFor (handMilliseconds);
    mouse.release();
    soak::runMessagesFor (handMilliseconds);
}

bool Storm::drag()
{
    constexpr auto numSteps = 4;
    auto* const frame = pickEditor();

    if (frame == nullptr)
        return false;

    const auto pick = [&]
    { return juce::Point<int> (random.nextInt (frame->getWidth()), random.nextInt (frame->getHeight())); };

    mouse.moveTo (frame->getWindowHandle(), pick());
    mouse.press();

    for (auto i = 0; i < numSteps; ++i)
    {
        mouse.moveTo (frame->getWindowHandle(), pick());
        soak::runMessagesFor (handMilliseconds);
    }

    mouse.release();
    return true;
}
} // namespace cv::storm
