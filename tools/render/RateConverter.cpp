#include "RateConverter.h"

#include "RenderError.h"

namespace cv::render
{
RateConverter::RateConverter (int channels, double ratioToUse, Source sourceToUse)
    : numChannels (channels)
    , ratio (ratioToUse)
    , source (std::move (sourceToUse))
{
    if (src_is_valid_ratio (ratio) == 0)
        throw RenderError ("the input's sample rate is too far from the one to render at");

    auto error = 0;
    converter.reset (src_callback_new (pull, SRC_SINC_BEST_QUALITY, numChannels, &error, this));

    if (converter == nullptr)
        throw RenderError (juce::String ("can't convert the sample rate: ") + src_strerror (error));
}

void RateConverter::read (float* interleaved, int numFrames)
{
    auto done = 0L;

    while (done < numFrames)
    {
        const auto got = src_callback_read (converter.get(), ratio, numFrames - done, interleaved + done * numChannels);

        if (got <= 0)
            break;

        done += got;
    }

    if (const auto error = src_error (converter.get()); error != 0)
        throw RenderError (juce::String ("can't convert the sample rate: ") + src_strerror (error));

    std::fill (interleaved + done * numChannels, interleaved + (long) numFrames * numChannels, 0.0f);
}

long RateConverter::pull (void* self, float** data)
{
    return static_cast<RateConverter*> (self)->source (*data);
}
} // namespace cv::render
