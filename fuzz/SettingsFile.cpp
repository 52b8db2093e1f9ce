#include "FuzzEnvironment.h"
#include "pluginCore/sharing/PluginGlobalSettings.h"

namespace
{
using cv::pluginCore::PluginGlobalSettings;

const cv::pluginCore::ProductInfo product { "Fuzzed", "1.0.0", "Corvane" };
} // namespace

/** The input is the settings file that the first plug-in finds; the last one writes it anew. */
int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size)
{
    auto& environment = cv::fuzz::Environment::get();
    static const auto file = []
    {
        PluginGlobalSettings (product).getValues().setProperty ("a", "1", nullptr);
        return PluginGlobalSettings::getInnerData (product)->file.getFile();
    }();

    file.replaceWithData (data, size);
    PluginGlobalSettings (product).getValues().setProperty ("fuzzed", "yes", nullptr);
    const auto kept = PluginGlobalSettings (product).getValues()["fuzzed"].toString() == "yes";
    cv::fuzz::require (kept, "a value is kept whatever the file held");
    environment.deliverMessages();
    return 0;
}
