#include "TemporaryOutput.h"

#include "Crash.h"
#include "RenderError.h"
#include "pluginCore/files/FilePath.h"

#include <filesystem>

namespace cv::render
{
namespace
{
/** A name of its own: one made of the target's would be too long for the disk where that is nearly so. */
juce::File chooseFile (const juce::File& target)
{
    const auto number = juce::String::toHexString (juce::Random::getSystemRandom().nextInt());
    return target.getParentDirectory().getNonexistentChildFile (".varlo-render-" + number, {}, false);
}
} // namespace

void TemporaryOutput::checkTarget (const juce::File& target)
{
    const auto folder = target.getParentDirectory();
    const auto path = target.getFullPathName();

    if (! folder.exists())
        throw RenderError ("no such folder: " + folder.getFullPathName());

    if (! folder.isDirectory())
        throw RenderError ("not a folder: " + folder.getFullPathName());

    if (target.isDirectory())
        throw RenderError ("is a folder, not a file to write: " + path);

    std::error_code error;
    const auto status = std::filesystem::status (pluginCore::toStandardPath (target), error);

    if (error == std::errc::filename_too_long)
        throw RenderError ("the name is too long: " + path);

    if (std::filesystem::exists (status) && ! std::filesystem::is_regular_file (status))
        throw RenderError ("not a regular file: " + path);

    if (! folder.hasWriteAccess() || ! target.hasWriteAccess())
        throw RenderError ("no permission to write " + path);
}

TemporaryOutput::TemporaryOutput (const juce::File& target) : temporary (target, chooseFile (target))
{
    deleteOnCrash (getFile());
}

TemporaryOutput::~TemporaryOutput()
{
    keepOnCrash (getFile());
}

void TemporaryOutput::commit()
{
    if (! temporary.overwriteTargetFileWithTemporary())
        throw RenderError ("can't replace " + temporary.getTargetFile().getFullPathName());
}
} // namespace cv::render
