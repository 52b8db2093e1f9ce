#include "varlo/controls/ImageAccessibility.h"

namespace cv::varlo
{
namespace
{
class ImageValue final : public juce::AccessibilityTextValueInterface
{
public:
    explicit ImageValue (std::function<juce::String()> valueSource) : getValue (std::move (valueSource)) {}

    bool isReadOnly() const override { return true; }

    juce::String getCurrentValueAsString() const override { return getValue(); }

    void setValueAsString (const juce::String&) override {}

private:
    const std::function<juce::String()> getValue;
};
} // namespace

std::unique_ptr<juce::AccessibilityHandler> makeImageAccessibility (juce::Component& component,
                                                                    std::function<juce::String()> getValue)
{
    using Handler = juce::AccessibilityHandler;

    return std::make_unique<Handler> (component, juce::AccessibilityRole::image, juce::AccessibilityActions(),
                                      Handler::Interfaces { std::make_unique<ImageValue> (std::move (getValue)) });
}
} // namespace cv::varlo
