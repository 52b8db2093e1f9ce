#include "varlo/editor/LinkLabel.h"

namespace cv::varlo
{
LinkLabel::LinkLabel (const juce::String& text) : Label ({}, text)
{
    setTitle (text);
    setHelpText (juce::translate ("Visit our website for updates"));
    setWantsKeyboardFocus (true);
}

LinkLabel::~LinkLabel() = default;

bool LinkLabel::keyPressed (const juce::KeyPress& key)
{
    if (key != juce::KeyPress::returnKey)
        return false;

    open();
    return true;
}

std::unique_ptr<juce::AccessibilityHandler> LinkLabel::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler> (
        *this, juce::AccessibilityRole::hyperlink,
        juce::AccessibilityActions().addAction (juce::AccessibilityActionType::press, [this] { open(); }));
}

void LinkLabel::open() const
{
    if (onOpen)
        onOpen();
}
} // namespace cv::varlo
