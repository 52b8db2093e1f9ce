#pragma once

#include <juce_events/juce_events.h>

namespace cv::pluginCore
{
/** Asks the maker's web site for the latest version, or fetches the change log, on a thread of its own.

    Set `url`, for a change log `changeLogMode`, and call startThread (juce::Thread::Priority::normal): the
    thread does that one job and ends, and the listeners hear of it. Whether and when a job starts is for
    the owner to decide. A failure is not told apart from "there is nothing new".

    Threads: everything here, construction and destruction included, is for the message thread, and the
    listeners are called on it. Only startThread(), while no job runs, hands the fields to the "Web Updater"
    thread until that thread has ended.
*/
class UpdateChecker final : public juce::Thread, private juce::AsyncUpdater
{
public:
    /** Hears of finished jobs, on the message thread. A listener may remove itself in the call. */
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** A version check has ended, well or not. The time of the release is in milliseconds since 1970,
            as the server states it, however far off; 0 if it never did.
        */
        virtual void versionCheckFinished (UpdateChecker&,
                                           bool updateAvailable,
                                           juce::int64 releaseTimeMilliseconds) = 0;

        /** The fetch of a change log has ended; the text is empty when there is none to show. */
        virtual void changeLogReady (UpdateChecker&, const juce::String& text) = 0;
    };

    /** Takes the running version as parseVersion() reads it. */
    explicit UpdateChecker (const juce::String& currentVersion);

    /** Leaves a running job, whatever it is waiting for, and its listeners hear nothing of it. Returns
        within a fraction of a second on a machine that isn't overloaded.
    */
    ~UpdateChecker() override;

    void addListener (Listener*);
    void removeListener (Listener*);

    /** What the server says of its latest version. */
    struct VersionInfos
    {
        juce::String version { "0.0.0" };
        juce::int64 releaseTimeMilliseconds = 0; ///< since 1970
    };

    /** Reads "key:value;" pairs; keys other than the two are skipped, and of several alike the last counts. Any
        thread.
    */
    static VersionInfos readVersionInfos (const juce::String& body);

    /** Reads "1.2.3" or "1.2.3 beta 4". What isn't there or isn't a number is 0; a release has beta number
        99, above every beta. Numbers beyond the range of an int end at its limit. Any thread.
    */
    static void parseVersion (const juce::String& text, int& major, int& minor, int& patch, bool& isBeta, int& beta);

    /** One number by which versions are compared. Its decimal weights are tight: 0.10.0 stands as high as
        1.0.0, and 0.0.10 as high as 0.1.0. Any thread.
    */
    static juce::int64 getVersionScore (int major, int minor, int patch, int beta) noexcept;

    /** The folder of the product's release notes on the server. To be set while no job runs. */
    juce::URL url;

    /** Which job the next start does: false for the version check, true for the change log. To be set while
        no job runs; false again when changeLogReady() is called.
    */
    bool changeLogMode = false;

private:
    void run() override;
    void handleAsyncUpdate() override;

    bool waitBeforeFirstRequest() const;
    void downloadVersionInfos();
    void getChangeLog();

    juce::ListenerList<Listener> listeners;

    int currentMajor = 0, currentMinor = 0, currentPatch = 0, currentBeta = 0;
    bool currentIsBeta = false;

    int latestMajor = 0, latestMinor = 0, latestPatch = 0, latestBeta = 0;
    bool latestIsBeta = false;

    bool updateAvailable = false;
    juce::int64 releaseTimeMilliseconds = 0;
    juce::String changeLog;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (UpdateChecker)
};
} // namespace cv::pluginCore
