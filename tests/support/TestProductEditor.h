#pragma once

#include "pluginCore/editor/PluginEditor.h"
#include "pluginCore/editor/PluginHeaderComponent.h"
#include "support/TestProduct.h"

namespace cv::test
{
/** The smallest editor there can be: the framework's, with its header and no look of its own. */
class TestProductEditor final : public pluginCore::PluginEditor
{
public:
    explicit TestProductEditor (TestProduct& product)
        : PluginEditor (product)
        , aspectRatio (product.editorAspectRatio)
        , header (product.getPresetsManager(), &product.getUndoManager())
    {
        addAndMakeVisible (header);
    }

    SizeLimits getEditorSizeLimits() const override { return { 100, 100, 10000, 10000 }; }

    double getEditorAspectRatio() const override { return aspectRatio; }

    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::black); }

    void resized() override { header.setBounds (getLocalBounds().withHeight (getHeight() / 8)); }

private:
    const double aspectRatio;
    pluginCore::PluginHeaderComponent header;
};
} // namespace cv::test
