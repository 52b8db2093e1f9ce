#include "pluginCore/state/StateChunk.h"

#include <gmock/gmock.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::pluginCore
{
namespace
{
/** A chunk with the length as given and no byte behind the text, in memory of exactly its size. */
std::vector<char> makeChunk (juce::uint32 length, const std::string& text, const std::string& magic = "VC2!")
{
    const auto length32 = juce::ByteOrder::swapIfBigEndian (length);
    std::vector<char> chunk (magic.begin(), magic.end());
    const auto* const lengthBytes = reinterpret_cast<const char*> (&length32);
    chunk.insert (chunk.end(), lengthBytes, lengthBytes + 4);
    chunk.insert (chunk.end(), text.begin(), text.end());
    chunk.shrink_to_fit();
    return chunk;
}

/** The name of the element in a chunk; empty where there is none. */
juce::String elementIn (const std::vector<char>& chunk)
{
    const auto xml = parseStateChunk (chunk.data(), (int) chunk.size());
    return xml != nullptr ? xml->getTagName() : juce::String();
}

TEST (StateChunk, ReadsWhatJuceWrites)
{
    juce::XmlElement xml ("state");
    xml.setAttribute ("name", juce::String::fromUTF8 ("\xc3\xa9t\xc3\xa9"));
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (xml, chunk);

    const auto result = parseStateChunk (chunk.getData(), (int) chunk.getSize());
    ASSERT_NE (result, nullptr);
    EXPECT_TRUE (result->isEquivalentTo (&xml, false));
}

TEST (StateChunk, LengthCountsTheTextAlone)
{
    EXPECT_EQ (elementIn (makeChunk (4, std::string ("<a/>\0", 5))), "a");
    EXPECT_EQ (elementIn (makeChunk (4, "<a/>junk")), "a");
    EXPECT_EQ (elementIn (makeChunk (3, "<a/>")), "");
}

TEST (StateChunk, TextIsCutAtTheEndOfTheData)
{
    EXPECT_EQ (elementIn (makeChunk (5, "<a/>")), "a");
    EXPECT_EQ (elementIn (makeChunk (0x7fffffff, "<a/>")), "a");
    EXPECT_EQ (elementIn (makeChunk (100, "<a>")), "");
}

TEST (StateChunk, RefusesLengthsThatAreNone)
{
    EXPECT_EQ (elementIn (makeChunk (0, std::string (1, '\0'))), "");
    EXPECT_EQ (elementIn (makeChunk (0, "<a/>")), "");
    EXPECT_EQ (elementIn (makeChunk (0x80000000u, "<a/>")), "");
    EXPECT_EQ (elementIn (makeChunk (0xffffffffu, "<a/>")), "");
}

TEST (StateChunk, RefusesWhatIsTooSmallOrForeign)
{
    EXPECT_EQ (parseStateChunk (nullptr, 0), nullptr);
    EXPECT_EQ (parseStateChunk ("VC2!", 4), nullptr);
    EXPECT_EQ (parseStateChunk ("VC2!\4\0\0\0", 8), nullptr);
    EXPECT_EQ (parseStateChunk ("VC2!\4\0\0\0<a/>", -1), nullptr);
    EXPECT_EQ (elementIn (makeChunk (4, "<a/>", "vC2!")), "");
    EXPECT_EQ (elementIn (makeChunk (4, "<a/>", "!2CV")), "");
    EXPECT_EQ (elementIn (makeChunk (4, "junk")), "");
}

TEST (StateChunk, RefusesTextOfMoreThanEightMegabytes)
{
    const auto textOf = [] (size_t numBytes) { return "<a>" + std::string (numBytes - 7, ' ') + "</a>"; };
    const auto limit = (size_t) 8 * 1024 * 1024;

    EXPECT_EQ (elementIn (makeChunk (0x7fffffff, textOf (limit))), "a");
    EXPECT_EQ (elementIn (makeChunk (0x7fffffff, textOf (limit + 1))), "");
    EXPECT_EQ (elementIn (makeChunk ((juce::uint32) limit + 1, textOf (limit + 1))), "");
    EXPECT_EQ (elementIn (makeChunk ((juce::uint32) limit, textOf (limit) + " behind the text")), "a");
}

TEST (StateChunk, RefusesTextThatIsNotUtf8)
{
    EXPECT_EQ (elementIn (makeChunk (100, "<a b='\xe9'/>")), "");
    EXPECT_EQ (elementIn (makeChunk (100, "<a/>\xf0")), "");
    EXPECT_EQ (elementIn (makeChunk (100, std::string ("<\0a\0/\0>\0", 8))), "");
}
} // namespace
} // namespace cv::pluginCore
