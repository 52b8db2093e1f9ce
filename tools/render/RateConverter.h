#pragma once

#include <samplerate.h>

#include <functional>
#include <memory>

namespace cv::render
{
/** Band-limited conversion between two sample rates, at the best quality that there is and without a
    shift in time. One thread.
*/
class RateConverter
{
public:
    /** What is converted, piece by piece: points `data` to interleaved samples that stay valid until
        the next call, and gives their number of frames, 0 at the end. Must not throw.
    */
    using Source = std::function<long (float*& data)>;

    /** The ratio is new rate / old rate; throws RenderError when it is outside 1/256 to 256. */
    RateConverter (int numChannels, double ratio, Source);

    /** Gives the next interleaved frames, zeros behind the end. */
    void read (float* interleaved, int numFrames);

private:
    static long pull (void* self, float** data);

    struct Deleter
    {
        void operator() (SRC_STATE* state) const noexcept { src_delete (state); }
    };

    int numChannels;
    double ratio;
    Source source;
    std::unique_ptr<SRC_STATE, Deleter> converter;

    RateConverter (const RateConverter&) = delete;
    RateConverter& operator= (const RateConverter&) = delete;
};
} // namespace cv::render
