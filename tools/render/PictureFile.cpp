#include "PictureFile.h"

#include "RenderError.h"
#include "TemporaryOutput.h"

namespace cv::render
{
void writePicture (const juce::Image& picture, const juce::File& target)
{
    TemporaryOutput temporary (target);
    auto isWritten = false;

    {
        juce::FileOutputStream stream (temporary.getFile());
        juce::PNGImageFormat format;
        isWritten = stream.openedOk() && format.writeImageToStream (picture, stream);
        stream.flush();
        isWritten = isWritten && stream.getStatus().wasOk();
    }

    if (! isWritten)
        throw RenderError ("can't be written: " + target.getFullPathName());

    temporary.commit();
}
} // namespace cv::render
