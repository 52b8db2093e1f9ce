#pragma once

#include "WavSizes.h"

namespace cv::render
{
/** A file as a stream that notices when its reader wants more than there is. JUCE's audio readers give
    silence then, which would hide that a file is damaged. One thread.
*/
class InputFileStream final : public juce::InputStream
{
public:
    explicit InputFileStream (const juce::File& source) : file (source) {}

    juce::Result getStatus() const { return file.getStatus(); }

    /** From here on its reader finds these sizes where the file says something else. */
    void correct (std::vector<SizeCorrection> sizes);

    /** From here on only what is asked for afterwards counts. */
    void startWatching() noexcept;

    /** True when a read gave less than was asked for. Readers of plain samples ask for what they need. */
    bool hadShortRead() const noexcept { return shortRead; }

    /** True when the reader was at the end and wanted to go on. Decoders, which read ahead in large
        pieces, do so only when their last piece was not enough.
    */
    bool wasAskedBehindEnd() const noexcept { return askedBehindEnd; }

    juce::int64 getTotalLength() override { return file.getTotalLength(); }

    juce::int64 getPosition() override { return file.getPosition(); }

    bool setPosition (juce::int64 position) override { return file.setPosition (position); }

    bool isExhausted() override;
    int read (void* destination, int numBytes) override;

private:
    juce::FileInputStream file;
    std::vector<SizeCorrection> corrections;
    bool shortRead = false;
    bool askedBehindEnd = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (InputFileStream)
};
} // namespace cv::render
