#pragma once

#include <juce_core/juce_core.h>

#include <span>

namespace cv::pluginCore
{
/** A language that there is a translation table for. */
struct Language
{
    const char* code;            // of two letters: what a choice is known by
    const char* threeLetterCode; // some systems tell this one
    const char* table;           // UTF-8, as resources/translations has it
    int tableBytes;
    const char* help; // the same for what the window doesn't show: names for screen readers, and help
    int helpBytes;
};

/** Puts one of the embedded translation tables in force, for juce::translate and TRANS.

    There is one table for the whole process: all instances of a plug-in share it, and the last choice
    counts. It stays in force when its manager goes.

    Message thread, or whichever thread constructs the processor.
*/
class LocalisedStringsManager
{
public:
    LocalisedStringsManager() = default;
    virtual ~LocalisedStringsManager() = default;

    /** All languages. The first one serves where there is no table. Any thread. */
    static std::span<const Language> getLanguages() noexcept;

    /** The code of the table for a display language as juce::SystemStats::getDisplayLanguage() tells it, for example
        "fr" for "fr-CA": two-letter and three-letter codes in lower case, with or without a region.
        A language without a table gets the first one's, "en".
    */
    static juce::String languageCodeFor (const juce::String& displayLanguage);

    /** The code of the table for the system's display language. */
    static juce::String systemLanguageCode();

    /** Puts the table of a language, by its two-letter code, in force and returns true. A code of none changes
        nothing and returns false. languageChanged() is called either way.

        Texts are looked up exactly first, then without regard to case, then among the help; a text in no row stays
        itself.
    */
    bool setLanguage (const juce::String& code);

    /** The code of the table that this manager put in force; empty before the first. */
    const juce::String& getLanguageCode() const noexcept { return languageCode; }

protected:
    /** Called at the end of each setLanguage() with its argument, for products that have texts to renew. */
    virtual void languageChanged (const juce::String& code);

private:
    juce::String languageCode;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (LocalisedStringsManager)
};
} // namespace cv::pluginCore
