#include "varlo/editor/SpectrogramComponent.h"

#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <benchmark/benchmark.h>
#include <juce_events/juce_events.h>

// The message thread's regular work with an open editor, at 44.1 kHz: each 33 ms the spectrogram takes the frames that
// have come, about three, and what it covers of the window is painted.

namespace cv::benchmarks
{
namespace
{
template <typename Child>
Child* findChild (juce::Component& parent)
{
    for (auto* child : parent.getChildren())
        if (auto* found = dynamic_cast<Child*> (child))
            return found;

    return nullptr;
}

/** An editor of a width in logical pixels, and the frames that a tick of its spectrogram finds. */
void tickAndPaint (benchmark::State& state)
{
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    test::ProcessorHarness harness;
    const std::unique_ptr<juce::AudioProcessorEditor> editor (harness.processor.createEditorIfNeeded());
    const auto width = (int) state.range (0);
    const auto numFrames = (int) state.range (1);
    editor->setSize (width, width * 11 / 20);

    auto* spectrogram = findChild<varlo::SpectrogramComponent> (*editor);

    if (spectrogram == nullptr)
    {
        state.SkipWithError ("the editor has no spectrogram");
        return;
    }

    juce::Image window (juce::Image::ARGB, editor->getWidth(), editor->getHeight(), true);
    const auto magnitudes = test::noise (numFrames * varlo::FFTProcessor::numBins, 1);

    for (auto _ : state)
    {
        if (numFrames > 0)
            harness.processor.getFFTProcessor().spectrumFifo.pushOverwriting (magnitudes.data(),
                                                                              (int) magnitudes.size());
        spectrogram->timerCallback();

        juce::Graphics g (window);
        g.reduceClipRegion (spectrogram->getBounds());
        editor->paintEntireComponent (g, false);
    }

    harness.processor.editorBeingDeleted (editor.get());
}

/** All of the editor, as when another window has covered it. */
void paintAll (benchmark::State& state)
{
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    test::ProcessorHarness harness;
    const std::unique_ptr<juce::AudioProcessorEditor> editor (harness.processor.createEditorIfNeeded());
    const auto width = (int) state.range (0);
    editor->setSize (width, width * 11 / 20);
    juce::Image window (juce::Image::ARGB, editor->getWidth(), editor->getHeight(), true);

    for (auto _ : state)
    {
        juce::Graphics g (window);
        editor->paintEntireComponent (g, false);
    }

    harness.processor.editorBeingDeleted (editor.get());
}

BENCHMARK (tickAndPaint)
    ->Name ("window/tick and paint")
    ->ArgsProduct ({ { 525, 1050, 2100 }, { 0, 4 } })
    ->ArgNames ({ "width", "frames" })
    ->Unit (benchmark::kMillisecond);
BENCHMARK (paintAll)
    ->Name ("window/paint all")
    ->Arg (525)
    ->Arg (1050)
    ->Arg (2100)
    ->ArgName ("width")
    ->Unit (benchmark::kMillisecond);
} // namespace
} // namespace cv::benchmarks
