#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::varlo
{
/** A label that the keyboard and screen readers find as a link. What a click does is its owner's affair. Message
    thread.
*/
class LinkLabel final : public juce::Label
{
public:
    /** The text is what the reader says, too. */
    explicit LinkLabel (const juce::String& text);
    ~LinkLabel() override;

    /** Called by Return and by a screen reader's press. */
    std::function<void()> onOpen;

    bool keyPressed (const juce::KeyPress&) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    void open() const;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (LinkLabel)
};
} // namespace cv::varlo
