#pragma once

#include <juce_core/juce_core.h>

namespace cv::test
{
/** Puts the translations of this process back, when it goes, to what they were when it came. */
class KeptTranslations
{
public:
    KeptTranslations()
    {
        if (const auto* const mappings = juce::LocalisedStrings::getCurrentMappings())
            former = std::make_unique<juce::LocalisedStrings> (*mappings);
    }

    ~KeptTranslations() { juce::LocalisedStrings::setCurrentMappings (former.release()); }

private:
    std::unique_ptr<juce::LocalisedStrings> former;

    JUCE_DECLARE_NON_COPYABLE (KeptTranslations)
};
} // namespace cv::test
