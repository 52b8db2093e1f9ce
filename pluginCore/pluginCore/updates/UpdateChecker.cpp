#include "pluginCore/updates/UpdateChecker.h"

#include "pluginCore/updates/WebText.h"

#include <cstdlib>

namespace cv::pluginCore
{
namespace
{
constexpr int numDelayRounds = 49;
constexpr int delayRoundMilliseconds = 5;
constexpr int betaNumberOfRelease = 99;

// The server isn't trusted: what it can make us hold and look through is bounded, at many times what it has
// to say. A longer answer is a failed check.
constexpr juce::int64 maxVersionBytes = 4 * 1024;
constexpr juce::int64 maxChangeLogBytes = 256 * 1024;

/** As std::atoi, but with numbers out of range at the limits instead of undefined. */
int toInt (const juce::String& text)
{
    return (int) juce::jlimit ((long long) std::numeric_limits<int>::min(), (long long) std::numeric_limits<int>::max(),
                               std::strtoll (text.toRawUTF8(), nullptr, 10));
}
} // namespace

UpdateChecker::UpdateChecker (const juce::String& currentVersion) : Thread ("Web Updater")
{
    parseVersion (currentVersion, currentMajor, currentMinor, currentPatch, currentIsBeta, currentBeta);
}

UpdateChecker::~UpdateChecker()
{
    // Without a limit, after which JUCE would kill the thread, and the C library the process with it. The
    // thread looks every webTextPollMilliseconds whether it is to end.
    stopThread (-1);

    // A host may take the message thread away before the message comes.
    cancelPendingUpdate();
}

void UpdateChecker::addListener (Listener* listener)
{
    JUCE_ASSERT_MESSAGE_THREAD
    listeners.add (listener);
}

void UpdateChecker::removeListener (Listener* listener)
{
    JUCE_ASSERT_MESSAGE_THREAD
    listeners.remove (listener);
}

void UpdateChecker::parseVersion (const juce::String& text, int& major, int& minor, int& patch, bool& isBeta, int& beta)
{
    const juce::String betaMark ("beta");
    isBeta = text.containsIgnoreCase (betaMark);
    beta = isBeta ? toInt (text.fromFirstOccurrenceOf (betaMark, false, true).trim()) : betaNumberOfRelease;

    juce::StringArray numbers;
    numbers.addTokens (text.upToFirstOccurrenceOf (betaMark, false, true).trim(), ".", "\"");

    major = toInt (numbers[0]);
    minor = toInt (numbers[1]);
    patch = toInt (numbers[2]);
}

juce::int64 UpdateChecker::getVersionScore (int major, int minor, int patch, int beta) noexcept
{
    return (juce::int64) major * 10000 + (juce::int64) minor * 1000 + (juce::int64) patch * 100 + beta;
}

void UpdateChecker::run()
{
    if (! changeLogMode)
        downloadVersionInfos();
    else if (! threadShouldExit())
        getChangeLog();

    if (! threadShouldExit())
        triggerAsyncUpdate();
}

void UpdateChecker::handleAsyncUpdate()
{
    if (std::exchange (changeLogMode, false))
        listeners.call ([this] (Listener& listener) { listener.changeLogReady (*this, changeLog); });
    else
        listeners.call ([this] (Listener& listener)
                        { listener.versionCheckFinished (*this, updateAvailable, releaseTimeMilliseconds); });
}

/** About a quarter of a second, so that an editor that closes quickly costs no network traffic. False when
    the thread is to end.
*/
bool UpdateChecker::waitBeforeFirstRequest() const
{
    for (auto round = 0; round < numDelayRounds; ++round)
    {
        if (threadShouldExit())
            return false;

        wait (delayRoundMilliseconds);
    }

    return true;
}

void UpdateChecker::downloadVersionInfos()
{
    if (! waitBeforeFirstRequest())
        return;

    if (const auto body =
            readWebText (url.getChildURL ("lastVersion.php"), maxVersionBytes, [this] { return ! threadShouldExit(); }))
    {
        const auto infos = readVersionInfos (*body);
        releaseTimeMilliseconds = infos.releaseTimeMilliseconds;
        parseVersion (infos.version, latestMajor, latestMinor, latestPatch, latestIsBeta, latestBeta);
    }

    updateAvailable = getVersionScore (currentMajor, currentMinor, currentPatch, currentBeta)
                      < getVersionScore (latestMajor, latestMinor, latestPatch, latestBeta);
}

UpdateChecker::VersionInfos UpdateChecker::readVersionInfos (const juce::String& body)
{
    juce::StringArray tokens;
    tokens.addTokens (body, ";", "\"");

    VersionInfos infos;

    for (const auto& token : tokens)
    {
        const auto key = token.upToFirstOccurrenceOf (":", false, false);
        const auto value = token.fromFirstOccurrenceOf (":", false, false);

        if (key.equalsIgnoreCase ("macVersion"))
            infos.version = value;
        else if (key.equalsIgnoreCase ("macReleaseDate"))
            infos.releaseTimeMilliseconds = std::strtoll (value.toRawUTF8(), nullptr, 10);
    }

    return infos;
}

void UpdateChecker::getChangeLog()
{
    auto body =
        readWebText (url.getChildURL ("changeLogMac.php"), maxChangeLogBytes, [this] { return ! threadShouldExit(); });

    if (! body.has_value() || threadShouldExit())
        return;

    // The site's own page for addresses that it doesn't know comes with a status like any other page.
    if (body->containsIgnoreCase ("the page you're looking for is not available"))
        body->clear();

    changeLog = *body;
}
} // namespace cv::pluginCore
