#include "ParameterChecks.h"
#include "pluginCore/state/XmlText.h"

/** The input is a preset file; what is saved after it must be one that can be loaded. */
int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size)
{
    auto& environment = cv::fuzz::Environment::get();
    static cv::varlo::AudioPluginAudioProcessor processor;
    auto& presets = processor.getPresetsManager();

    const auto file = environment.getFile ("input.cvpreset");
    file.replaceWithData (data, size);
    cv::fuzz::restoreNeutralState (processor);
    presets.loadPreset (file);
    cv::fuzz::requireSoundState (processor);

    const auto saved = processor.createStateXml (false)->toString();
    cv::fuzz::require (cv::pluginCore::parseXmlText (saved) != nullptr, "a saved preset is read");
    environment.deliverMessages();
    return 0;
}
