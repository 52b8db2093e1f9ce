#include "pluginCore/presetsBar/ChevronPath.h"

namespace cv::pluginCore
{
juce::Path createChevronPath()
{
    juce::Path path;
    path.setUsingNonZeroWinding (true);

    path.startNewSubPath (2.330f, 7.954f);
    path.cubicTo (1.623f, 8.661f, 0.916f, 7.954f, 0.916f, 7.954f);
    path.cubicTo (0.916f, 7.954f, 0.209f, 7.247f, 0.916f, 6.540f);
    path.lineTo (7.280f, 0.176f);
    path.lineTo (0.916f, -6.188f);
    path.cubicTo (0.209f, -6.895f, 0.916f, -7.602f, 0.916f, -7.602f);
    path.cubicTo (0.916f, -7.602f, 1.623f, -8.309f, 2.330f, -7.602f);
    path.lineTo (9.401f, -0.531f);
    path.cubicTo (9.401f, -0.531f, 9.455f, -0.477f, 9.513f, -0.386f);
    path.cubicTo (9.636f, -0.221f, 9.694f, -0.060f, 9.704f, 0.091f);
    path.cubicTo (9.704f, 0.119f, 9.714f, 0.146f, 9.714f, 0.175f);
    path.cubicTo (9.713f, 0.204f, 9.714f, 0.232f, 9.704f, 0.260f);
    path.cubicTo (9.694f, 0.412f, 9.636f, 0.573f, 9.513f, 0.738f);
    path.cubicTo (9.452f, 0.826f, 9.401f, 0.883f, 9.401f, 0.883f);
    path.lineTo (2.330f, 7.954f);
    path.closeSubPath();

    return path;
}
} // namespace cv::pluginCore
