#pragma once

namespace cv::test
{
/** Makes the names known to the X server that a window manager makes known on every desktop. JUCE looks them
    up when it first opens the display, and a window without them is an X error. Without a display this does
    nothing; where there are no X servers, neither.
*/
class DisplayAtoms
{
public:
    DisplayAtoms();
    ~DisplayAtoms();

    DisplayAtoms (const DisplayAtoms&) = delete;
    DisplayAtoms& operator= (const DisplayAtoms&) = delete;

private:
    // A server without clients forgets the names, so this stays one.
    void* display = nullptr;
};
} // namespace cv::test
