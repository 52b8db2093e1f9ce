#include "ParameterChecks.h"

/** The input is what a host hands to setStateInformation(). */
int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size)
{
    auto& environment = cv::fuzz::Environment::get();
    static cv::varlo::AudioPluginAudioProcessor processor;

    cv::fuzz::restoreNeutralState (processor);
    processor.setStateInformation (data, (int) size);
    cv::fuzz::requireSoundState (processor);
    environment.deliverMessages();
    return 0;
}
