#pragma once

#include "render/DisplayConnection.h"
#include "render/EditorFrame.h"
#include "soak/EditorPlaces.h"
#include "soak/PluginActions.h"
#include "support/RealMouse.h"

#include <memory>

namespace cv::soak
{
/** What users do with the editor, by the display's own mouse. Each action but open() takes for granted that the
    editor is open; each takes up to a few seconds and says whether it had the effect that the user wanted.
    Message thread.
*/
class EditorActions
{
public:
    /** All of them outlive this object. */
    EditorActions (juce::AudioPluginInstance&,
                   const PluginActions&,
                   const render::DisplayConnection&,
                   test::RealMouse&,
                   juce::Random&);

    bool isOpen() const noexcept { return frame != nullptr; }

    bool open();
    bool close();

    /** Gives the editor another size, as when the host's window is resized. */
    bool resize();

    /** Drags the editor's own corner. */
    bool dragCorner();

    /** Clicks at one of the arrows. */
    bool stepPreset();

    /** Opens the menu of the presets and chooses one. */
    bool chooseFromMenu();

    /** Opens the menu and clicks beside it. */
    bool dismissMenu();

    bool dragKnob();

    /** Three taps in time. */
    bool tap();

private:
    EditorPlaces getPlaces() const { return { frame->getWidth(), frame->getHeight() }; }

    void moveTo (juce::Point<int>);
    void click (juce::Rectangle<int>);
    void pressAndRelease();
    void openMenu();
    void drag (juce::Point<int> start, juce::Point<int> distance);
    bool changesValues (const std::function<void()>& action) const;

    juce::AudioPluginInstance& plugin;
    const PluginActions& values;
    const render::DisplayConnection& display;
    test::RealMouse& mouse;
    juce::Random& random;
    std::unique_ptr<render::EditorFrame> frame;

    JUCE_DECLARE_NON_COPYABLE (EditorActions)
};
} // namespace cv::soak
