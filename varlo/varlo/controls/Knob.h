#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** A rotary slider that keys and screen readers move as well as the mouse does. Steps are parts of the way that the
    knob turns, so that they are fine where the values lie close; each is a gesture of its own. It is one stop of the
    Tab key, its text box none: Return opens that, and Return, Escape and Tab leave it.

    | Key                    | Effect                                              |
    |------------------------|-----------------------------------------------------|
    | up, right; down, left  | a hundredth of the way; with shift a thousandth     |
    | page up, page down     | a tenth of the way                                  |
    | home, end              | the lowest, the highest value                       |
    | delete                 | the value that a double click brings back           |
    | return                 | opens the text box                                  |

    All other keys are left to the host. Message thread.
*/
class Knob final : public juce::Slider
{
public:
    Knob();
    ~Knob() override;

    bool keyPressed (const juce::KeyPress&) override;
    void lookAndFeelChanged() override;
    void enablementChanged() override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    /** The value after so much more of the way, 0 to 1, has been turned; within the range. */
    double getValueAfter (double proportionOfTravel);

    /** Sets a value in a gesture, as a drag with the mouse would; nothing if it is there already. */
    void moveTo (double newValue);

private:
    void keepTextBoxOutOfTabOrder();

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Knob)
};
} // namespace cv::varlo
