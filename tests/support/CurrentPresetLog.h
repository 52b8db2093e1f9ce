#pragma once

#include "support/TestProduct.h"

namespace cv::test
{
/** Notes which preset is current at each move of a parameter, by the file's name. */
class CurrentPresetLog final : public juce::AudioProcessorValueTreeState::Listener
{
public:
    CurrentPresetLog (TestProduct& productToWatch, juce::String parameterToWatch)
        : product (productToWatch)
        , parameterId (std::move (parameterToWatch))
    {
        product.getValueTreeState().addParameterListener (parameterId, this);
    }

    ~CurrentPresetLog() override { product.getValueTreeState().removeParameterListener (parameterId, this); }

    juce::StringArray names;

private:
    void parameterChanged (const juce::String&, float) override
    {
        names.add (product.getPresetsManager().getCurrentPresetFile().getFileName());
    }

    TestProduct& product;
    const juce::String parameterId;

    JUCE_DECLARE_NON_COPYABLE (CurrentPresetLog)
};
} // namespace cv::test
