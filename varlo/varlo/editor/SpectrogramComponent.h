#pragma once

#include "varlo/spectrum/FFTProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** The last five seconds of the output's spectrum as a scrolling picture: time runs to the left, frequency
    upwards on a linear axis. It starts blank whenever it is made and when the sample rate changes, and takes
    all frames from the thread's queue, whose only reader it has to be. Message thread.
*/
class SpectrogramComponent final : public juce::Component, public juce::Timer
{
public:
    /** The thread outlives the component, which takes its onSampleRateChanged. */
    explicit SpectrogramComponent (FFTProcessor&);

    ~SpectrogramComponent() override;

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;

    /** Draws the frames that wait. Without any it leaves the picture alone. */
    void timerCallback() override;

    /** Its value is the loudest tone of the newest frame. */
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    /** The picture before it is scaled to the component: a column for each frame, a row for each bin. */
    const juce::Image& getHistoryImage() const noexcept { return historyImage; }

private:
    void rebuildImage();
    juce::String describeNewestFrame() const;

    juce::Image historyImage;
    FFTProcessor& fftProcessor;
    std::vector<float> columnBuffer;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SpectrogramComponent)
};
} // namespace cv::varlo
