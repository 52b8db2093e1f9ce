#include "host/LoadedBundle.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace cv::varlo
{
using namespace Steinberg;

LoadedBundle::LoadedBundle() : library (dlopen (VARLO_BUNDLE_BINARY, RTLD_NOW | RTLD_LOCAL))
{
    if (library == nullptr)
    {
        ADD_FAILURE() << dlerror();
        return;
    }

    using Entry = bool (*) (void*);
    using GetFactory = IPluginFactory* (*) ();
    const auto entry = reinterpret_cast<Entry> (dlsym (library, "ModuleEntry"));
    const auto getFactory = reinterpret_cast<GetFactory> (dlsym (library, "GetPluginFactory"));

    if (entry == nullptr || getFactory == nullptr || ! entry (library))
    {
        ADD_FAILURE() << "no VST3 module: " << VARLO_BUNDLE_BINARY;
        return;
    }

    if (auto* const base = getFactory())
    {
        base->queryInterface (IPluginFactory2_iid, reinterpret_cast<void**> (&factory));
        base->release();
    }

    if (factory != nullptr)
        createComponent();
}

LoadedBundle::~LoadedBundle()
{
    if (component != nullptr)
    {
        component->terminate();
        component->release();
    }

    if (factory != nullptr)
        factory->release();

    if (library == nullptr)
        return;

    using Exit = bool (*)();

    if (const auto exit = reinterpret_cast<Exit> (dlsym (library, "ModuleExit")))
        exit();

    dlclose (library);
}

void LoadedBundle::createComponent()
{
    for (auto i = 0; i < factory->countClasses(); ++i)
    {
        PClassInfo info;

        if (factory->getClassInfo (i, &info) != kResultOk || juce::String (info.category) != "Audio Module Class")
            continue;

        factory->createInstance (info.cid, Vst::IComponent_iid, reinterpret_cast<void**> (&component));
        break;
    }

    if (component == nullptr || component->initialize (nullptr) != kResultOk)
        ADD_FAILURE() << "no component";
}
} // namespace cv::varlo
