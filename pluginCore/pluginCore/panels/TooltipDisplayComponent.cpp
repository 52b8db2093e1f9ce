#include "pluginCore/panels/TooltipDisplayComponent.h"

namespace cv::pluginCore
{
TooltipDisplayComponent::TooltipDisplayComponent()
{
    addAndMakeVisible (label);
}

void TooltipDisplayComponent::setText (const juce::String& text)
{
    label.setText (text, juce::dontSendNotification);
}

void TooltipDisplayComponent::resized()
{
    label.setBounds (getLocalBounds());
}
} // namespace cv::pluginCore
