#include "varlo/editor/SpectrogramComponent.h"

#include "varlo/controls/ImageAccessibility.h"
#include "varlo/lookAndFeel/Palette.h"
#include "varlo/spectrum/SpectrogramImage.h"
#include "varlo/spectrum/SpectrumPeak.h"

namespace cv::varlo
{
namespace
{
constexpr int refreshIntervalMilliseconds = 33;
} // namespace

SpectrogramComponent::SpectrogramComponent (FFTProcessor& source) : fftProcessor (source)
{
    fftProcessor.onSampleRateChanged = [this] (double) { rebuildImage(); };
    rebuildImage();

    setTitle (juce::translate ("Spectrogram"));
    setHelpText (juce::translate ("The last five seconds of the output: time runs to the left, frequency upwards"));
    setOpaque (true);
    startTimer (refreshIntervalMilliseconds);
}

SpectrogramComponent::~SpectrogramComponent()
{
    fftProcessor.onSampleRateChanged = nullptr;
}

void SpectrogramComponent::rebuildImage()
{
    historyImage = createSpectrogramImage (fftProcessor.sampleRate);
    columnBuffer.clear();
}

juce::String SpectrogramComponent::describeNewestFrame() const
{
    const auto peak = findSpectrumPeak (columnBuffer, fftProcessor.sampleRate);

    if (! peak.has_value())
        return juce::translate ("Silence");

    return juce::String (juce::roundToInt (peak->frequencyHz)) + " Hz, "
           + juce::String (juce::roundToInt (peak->levelDb)) + " dB";
}

std::unique_ptr<juce::AccessibilityHandler> SpectrogramComponent::createAccessibilityHandler()
{
    return makeImageAccessibility (*this, [this] { return describeNewestFrame(); });
}

void SpectrogramComponent::timerCallback()
{
    columnBuffer.resize (FFTProcessor::numBins);

    while (fftProcessor.spectrumFifo.pop (columnBuffer.data(), FFTProcessor::numBins))
    {
        appendSpectrogramColumn (historyImage, columnBuffer);
        repaint();
    }
}

void SpectrogramComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::blankSpectrogram);

    if (historyImage.isNull())
        return;

    const auto area = getLocalBounds().reduced (1).toFloat();

    g.drawImageTransformed (historyImage,
                            juce::AffineTransform::scale (area.getWidth() / (float) historyImage.getWidth(),
                                                          area.getHeight() / (float) historyImage.getHeight())
                                .translated (area.getPosition()));
}

void SpectrogramComponent::paintOverChildren (juce::Graphics& g)
{
    const auto size = getLocalBounds().toFloat();
    const auto frame = size.reduced (0.5f);
    const auto cornerSize = 0.03f * size.getHeight();

    juce::Path outsideOfFrame;
    outsideOfFrame.addRectangle (size);
    outsideOfFrame.setUsingNonZeroWinding (false);
    outsideOfFrame.addRoundedRectangle (frame, cornerSize);

    g.setColour (palette::panel);
    g.fillPath (outsideOfFrame);

    g.setGradientFill (
        juce::ColourGradient (palette::rimTop, 0.0f, 0.0f, palette::rimBottom, 0.0f, size.getHeight(), false));
    g.drawRoundedRectangle (frame, cornerSize, 1.0f);
}
} // namespace cv::varlo
