#include "host/EchoModel.h"

#include <cmath>
#include <numbers>

namespace cv::varlo
{
std::vector<double> wetLowpass (const std::vector<double>& input, double cutoff, double sampleRate)
{
    const auto g = std::tan (std::numbers::pi * cutoff / sampleRate);
    const auto damping = 1.0 / 0.1;
    auto s1 = 0.0;
    auto s2 = 0.0;
    std::vector<double> output;

    for (const auto x : input)
    {
        const auto highpass = (x - s1 * (g + damping) - s2) / (1.0 + damping * g + g * g);
        const auto bandpass = highpass * g + s1;
        const auto lowpass = bandpass * g + s2;
        s1 = highpass * g + bandpass;
        s2 = bandpass * g + lowpass;
        output.push_back (lowpass);
    }

    return output;
}

std::vector<double> feedbackLadder (const std::vector<double>& input, double cutoff, double sampleRate)
{
    const auto t = std::tan (std::numbers::pi * cutoff / sampleRate);
    const auto g = t / (1.0 + t);
    const auto a = (t - 1.0) / (1.0 + t);
    double s[4] {};
    std::vector<double> output;

    for (const auto x : input)
    {
        const auto y = s[3] + g * (s[2] + g * (s[1] + g * (s[0] + x)));
        const auto y0 = s[0] + g * x;
        const auto y1 = s[1] + g * y0;
        const auto y2 = s[2] + g * y1;
        s[0] = g * x - a * y0;
        s[1] = g * y0 - a * y1;
        s[2] = g * y1 - a * y2;
        s[3] = g * y2 - a * y;
        output.push_back (y);
    }

    return output;
}
} // namespace cv::varlo
