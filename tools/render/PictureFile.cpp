#include "PictureFile.h"

#include "RenderError.h"

namespace cv::render
{
void writePicture (const juce::Image& picture, const juce::File& target)
{
    const juce::TemporaryFile temporary (target, juce::TemporaryFile::useHiddenFile);
    auto isWritten = false;

    {
        juce::FileOutputStream stream (temporary.getFile());
        juce::PNGImageFormat format;
        isWritten = stream.openedOk() && format.writeImageToStream (picture, stream);
        stream.flush();
        isWritten = isWritten && stream.getStatus().wasOk();
    }

    if (! isWritten || ! temporary.overwriteTargetFileWithTemporary())
        throw RenderError ("can't be written: " + target.getFullPathName());
}
} // namespace cv::render
