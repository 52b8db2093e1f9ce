#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>

namespace cv::render
{
/** A host's window around a plug-in's editor, as large as the editor, whatever that does. Message thread. */
class EditorFrame final : public juce::Component
{
public:
    /** Makes the editor. Throws RenderError when the plug-in has none. The plug-in outlives this object. */
    explicit EditorFrame (juce::AudioPluginInstance&);
    ~EditorFrame() override;

    /** Puts the window on the screen, at the component's position. */
    void show();

    /** Takes a size in pixels, which the plug-in brings to what it allows. */
    void setEditorSize (juce::Point<int>);

    void paint (juce::Graphics&) override;
    void childBoundsChanged (juce::Component*) override;

private:
    juce::AudioPluginInstance& plugin;
    const std::unique_ptr<juce::AudioProcessorEditor> editor;

    JUCE_DECLARE_NON_COPYABLE (EditorFrame)
};
} // namespace cv::render
