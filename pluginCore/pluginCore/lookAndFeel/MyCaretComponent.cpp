#include "pluginCore/lookAndFeel/MyCaretComponent.h"

namespace cv::pluginCore
{
void MyCaretComponent::setCaretPosition (const juce::Rectangle<int>& characterArea)
{
    // This starts the blinking as well.
    CaretComponent::setCaretPosition (characterArea);

    setBounds (characterArea.withWidth (juce::jmax (caretWidth, 0)));
}
} // namespace cv::pluginCore
