#include "support/DisplayAtoms.h"

#include <gmock/gmock.h>
#include <juce_events/juce_events.h>

namespace
{
/** Fails the running test when one of JUCE's assertions fires; debug builds log them. */
class AssertionListener final : public juce::Logger
{
public:
    AssertionListener() { setCurrentLogger (this); }

    ~AssertionListener() override { setCurrentLogger (nullptr); }

private:
    void logMessage (const juce::String& message) override
    {
        if (message.startsWith ("JUCE Assertion failure"))
            ADD_FAILURE() << message;
        else
            std::cerr << message << std::endl;
    }

    JUCE_DECLARE_NON_COPYABLE (AssertionListener)
};
} // namespace

int main (int argc, char** argv)
{
    testing::InitGoogleMock (&argc, argv);

    const cv::test::DisplayAtoms displayAtoms;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    const AssertionListener assertionListener;

    return RUN_ALL_TESTS();
}
