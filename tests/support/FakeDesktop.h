#pragma once

#include "support/ScratchFolder.h"

namespace cv::test
{
/** A system, for as long as this lives, whose only program is one that opens files, and that just notes
    which. Without programs for dialogs, JUCE shows its own. One at a time.
*/
class FakeDesktop
{
public:
    FakeDesktop();
    ~FakeDesktop();

    /** The file that was opened last; none yet gives an empty text. */
    juce::String getOpenedPath() const;

private:
    const ScratchFolder scratch;
    const juce::File note = scratch.getFile ("opened");
    const juce::String formerPath;

    JUCE_DECLARE_NON_COPYABLE (FakeDesktop)
};
} // namespace cv::test
