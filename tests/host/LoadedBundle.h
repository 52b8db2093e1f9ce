#pragma once

#include <juce_core/juce_core.h>
#include <pluginterfaces/base/ipluginbase.h>
#include <pluginterfaces/vst/ivstcomponent.h>

namespace cv::varlo
{
/** The built bundle's binary in this process, seen through the plug-in interfaces alone. Its factory and
    its component are null when something fails on the way there, and the test with it.
*/
class LoadedBundle
{
public:
    LoadedBundle();
    ~LoadedBundle();

    Steinberg::IPluginFactory2* getFactory() const noexcept { return factory; }

    /** An initialised instance of the first class of the category "Audio Module Class". */
    Steinberg::Vst::IComponent* getComponent() const noexcept { return component; }

private:
    void createComponent();

    void* library = nullptr;
    Steinberg::IPluginFactory2* factory = nullptr;
    Steinberg::Vst::IComponent* component = nullptr;

    JUCE_DECLARE_NON_COPYABLE (LoadedBundle)
};
} // namespace cv::varlo
