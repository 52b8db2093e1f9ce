#pragma once

#include "support/FindComponent.h"
#include "support/ProcessorHarness.h"
#include "support/Rendering.h"
#include "support/TemporaryHome.h"
#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

#include <gtest/gtest.h>

namespace cv::test
{
/** Opens the plug-in's editor before each test, without asking for updates, and closes it afterwards. */
class VarloEditorFixture : public testing::Test
{
protected:
    VarloEditorFixture()
    {
        harness.prepare();
        harness.processor.getGlobalSettings().getValues().setProperty ("checkForUpdates", "0", nullptr);
        editor.reset (dynamic_cast<varlo::AudioPluginAudioProcessorEditor*> (harness.processor.createEditorIfNeeded()));
    }

    ~VarloEditorFixture() override { close(); }

    void close()
    {
        if (editor != nullptr)
            harness.processor.editorBeingDeleted (editor.get());

        editor.reset();
    }

    template <typename Type>
    Type& find() const
    {
        return *findComponent<Type> (*editor);
    }

    varlo::LabelledSlider& findKnob (const juce::String& caption) const
    {
        return *findComponent<varlo::LabelledSlider> (
            *editor,
            [&] (auto& knob) {
                return findComponent<juce::Label> (knob, [&] (auto& label) { return label.getText() == caption; })
                       != nullptr;
            });
    }

    juce::Slider& findSlider (const juce::String& caption) const
    {
        return *findComponent<juce::Slider> (findKnob (caption));
    }

    juce::Label& findText (const juce::String& caption) const
    {
        return *findComponent<juce::Label> (findSlider (caption));
    }

    /** Returns the delay in milliseconds after a text has been typed into its knob. */
    float typeDelay (const juce::String& input)
    {
        findText ("Delay").setText (input, juce::sendNotificationSync);
        return harness.parameter ("delay").get();
    }

    juce::Button& findHeaderButton (const juce::String& name) const
    {
        return *findComponent<juce::Button> (find<pluginCore::PluginHeaderComponent>(),
                                             [&] (auto& button) { return button.getName() == name; });
    }

    bool isLedLit() const
    {
        auto& led = find<varlo::BlinkingLed>();
        return render (led).getPixelAt (led.getWidth() / 2, led.getHeight() / 2) != juce::Colours::black;
    }

    const TemporaryHome home;
    ProcessorHarness harness;
    std::unique_ptr<varlo::AudioPluginAudioProcessorEditor> editor;
};
} // namespace cv::test
