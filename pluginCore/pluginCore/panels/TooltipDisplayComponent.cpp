#include "pluginCore/panels/TooltipDisplayComponent.h"

#include "pluginCore/lookAndFeel/Markers.h"

namespace cv::pluginCore
{
TooltipDisplayComponent::TooltipDisplayComponent()
{
    getProperties().set (markers::smallLabels, true);
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
