#pragma once

#include <juce_core/juce_core.h>

namespace cv::render
{
/** A file in the making, beside the one that it is to become. It vanishes with this object unless it has taken
    its place, and with a crash too. Its name is short, however long the target's is. One thread.
*/
class TemporaryOutput
{
public:
    /** Throws RenderError when a file can't be put there: no such folder, no permission, a folder or a device of
        that name, a name that is too long. Writes nothing.
    */
    static void checkTarget (const juce::File&);

    /** Chooses a name. Whoever writes makes the file. */
    explicit TemporaryOutput (const juce::File& target);
    ~TemporaryOutput();

    const juce::File& getFile() const noexcept { return temporary.getFile(); }

    /** Puts the file, which is closed now, in the target's place. Throws RenderError when that fails. */
    void commit();

private:
    const juce::TemporaryFile temporary;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TemporaryOutput)
};
} // namespace cv::render
