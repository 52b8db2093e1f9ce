#include "FuzzEnvironment.h"
#include "pluginCore/lookAndFeel/Markers.h"
#include "pluginCore/panels/UpdateChangeLogComponent.h"
#include "pluginCore/text/ShapeableText.h"
#include "pluginCore/updates/UpdateChecker.h"
#include "pluginCore/updates/WebText.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

namespace
{
using cv::fuzz::require;
using cv::pluginCore::UpdateChecker;

/** Half of the inputs are an answer of the server, byte by byte. Bytes alone rarely make characters of other
    scripts, so the other half is a sequence of characters, two bytes each and every eighth beyond the first plane.
*/
juce::String readText (const unsigned char* data, size_t size, bool asCharacters)
{
    if (! asCharacters)
        return cv::pluginCore::decodeWebText (data, size);

    juce::MemoryOutputStream utf8;

    for (size_t i = 0; i + 1 < size; i += 2)
    {
        const auto code = (juce::juce_wchar) (data[i] * 256 + data[i + 1]);
        const auto isSurrogate = code >= 0xd800 && code < 0xe000;
        utf8.appendUTF8Char (isSurrogate || i % 16 == 14 ? 0x1f000 + code % 0x1000 : code);
    }

    return utf8.toUTF8();
}

void readVersion (const juce::String& text)
{
    const auto infos = UpdateChecker::readVersionInfos (text);
    auto major = 0, minor = 0, patch = 0, beta = 0;
    auto isBeta = false;
    UpdateChecker::parseVersion (infos.version, major, minor, patch, isBeta, beta);
    UpdateChecker::getVersionScore (major, minor, patch, beta);
}

/** Lays a name out and draws it where presets are shown: on the bar's button, in the menu, among files. */
void drawName (cv::varlo::PluginLookAndFeel& look, juce::Graphics& g, const juce::String& name, int width, int height)
{
    juce::Component bar;
    bar.getProperties().set (cv::pluginCore::markers::presetsBar, true);
    juce::TextButton button (name);
    bar.addAndMakeVisible (button);
    button.setSize (width, height);
    button.paintEntireComponent (g, false);

    auto itemWidth = 0, itemHeight = 0;
    look.getIdealPopupMenuItemSize (name, false, height, itemWidth, itemHeight);
    look.drawPopupMenuItem (g, { width, height }, false, true, false, false, true, name, {}, nullptr, nullptr);
    g.drawFittedText (name, 0, 0, width, height, juce::Justification::centredLeft, 2);
}

struct ShutdownListUser : juce::DeletedAtShutdown
{
};

void requireFixedPoint (const juce::String& text)
{
    const auto shown = cv::pluginCore::getShapeableText (text);
    require (cv::pluginCore::getShapeableText (shown) == shown, "what is let through is let through again");
}
} // namespace

/** The system's library for fonts keeps what it has once made of its settings. */
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

/** The input is a version text, a change log and the name of a preset at once, behind three bytes for the kind of
    the text and the size of what it is laid out in.
*/
extern "C" int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size)
{
    if (size < 3)
        return 0;

    // JUCE's list of what goes at shutdown has to outlive the environment, which ends it.
    [[maybe_unused]] static const auto hasList = []
    {
        delete new ShutdownListUser;
        return true;
    }();

    auto& environment = cv::fuzz::Environment::get();
    static cv::varlo::PluginLookAndFeel look;
    static cv::pluginCore::UpdateChangeLogComponent changeLog { nullptr };
    static juce::Image image (juce::Image::ARGB, 600, 400, true, juce::SoftwareImageType());

    juce::LookAndFeel::setDefaultLookAndFeel (&look);
    changeLog.setLookAndFeel (&look);
    const auto width = 40 + 2 * data[1];
    const auto height = 20 + data[2];
    const auto text = readText (data + 3, size - 3, data[0] % 2 != 0);

    readVersion (text);
    requireFixedPoint (text);

    juce::Graphics g (image);
    changeLog.setChangeLog (text);
    changeLog.setSize (width, height);
    changeLog.paintEntireComponent (g, false);
    drawName (look, g, cv::pluginCore::getShapeableLine (text.substring (0, 255)), width, height / 4);

    environment.deliverMessages();
    return 0;
}
