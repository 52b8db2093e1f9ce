#pragma once

#include "CommandLine.h"
#include "ParameterText.h"

#include <vector>

namespace cv::render
{
/** One parameter that moves while the render runs. Before its first point it has the first value, after
    the last point the last one. Between two points it goes in a straight line of the normalised value,
    as automation lanes in hosts do; a switch keeps the value of the point before. Two points of the
    same time are a jump.
*/
class Automation
{
public:
    /** Converts the points' values through the plug-in. Throws RenderError for a value that the
        parameter does not take. Message thread.
    */
    Automation (const ParameterText&, const std::vector<Breakpoint>&);

    /** Gives the parameter the value that it has at this time. */
    void applyAt (double seconds);

private:
    struct Point
    {
        double seconds;
        float normalised;
    };

    float getValueAt (double seconds) const;

    juce::AudioProcessorParameter& parameter;
    bool isStepped;
    std::vector<Point> points;
    std::optional<float> lastValue;
};
} // namespace cv::render
