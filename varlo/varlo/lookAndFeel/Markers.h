#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Properties of components that the product's look-and-feel follows, beside the framework's. */
namespace cv::varlo::properties
{
/** Any component's, bool: the labels in it, at any depth, have a font half as high as they are. */
inline const juce::Identifier halfHeightLabels { "halfHeightLabels" };

/** A text button's, bool: the caption stands at the left. */
inline const juce::Identifier captionAtLeft { "JustificationLeft" };

/** A label's, double: down to which part of its height, from 0 to 1, the text is bright. */
inline const juce::Identifier brightTextProportion { "gradYProp" };

/** A rotary slider's, bool: the arc begins at the value that a double click brings back, if it does. */
inline const juce::Identifier centred { "centered" };
} // namespace cv::varlo::properties
