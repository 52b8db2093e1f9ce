#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

namespace cv::pluginCore
{
/** Shows which control of a window has the keyboard: the look-and-feel's outline around it, from the first key that
    finds its way with the controls until the next press of the mouse. Who uses the mouse alone never sees it. Where
    text is typed the caret is enough. Message thread.
*/
class FocusRing final : private juce::KeyListener,
                        private juce::MouseListener,
                        private juce::FocusChangeListener,
                        private juce::AsyncUpdater
{
public:
    /** The window has to outlive this. */
    explicit FocusRing (juce::Component& windowContent);
    ~FocusRing() override;

    /** To be called when all controls are there: those that take the keyboard are the ones to be listened to. */
    void watchControls();

    /** What the outline is around; null if there is none. */
    juce::Component* getOwner() const noexcept { return owner; }

private:
    bool keyPressed (const juce::KeyPress&, juce::Component*) override;
    void mouseDown (const juce::MouseEvent&) override;
    void globalFocusChanged (juce::Component*) override;
    void handleAsyncUpdate() override;

    void watchControlsIn (juce::Component&);
    juce::Component* findOwner() const;

    juce::Component& content;
    std::vector<juce::Component::SafePointer<juce::Component>> watched;
    bool isKeyboardInUse = false;
    juce::Component::SafePointer<juce::Component> owner;
    std::unique_ptr<juce::FocusOutline> outline;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FocusRing)
};
} // namespace cv::pluginCore
