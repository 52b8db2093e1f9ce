#include "host/LoadedBundle.h"

#include <gmock/gmock.h>
#include <juce_core/juce_core.h>

#include <regex>

namespace cv::varlo
{
namespace
{
using namespace Steinberg;

struct ExpectedClass
{
    const char* category;
    const char* subCategories;
    const char* classId;
};

// Hosts find the plug-in in saved projects by its class IDs: never change them.
constexpr ExpectedClass expectedClasses[] {
    { "Audio Module Class", "Fx|Delay", "ABCDEF019182FAEB436F727656726C6F" },
    { "Component Controller Class", "Fx|Delay", "ABCDEF011234ABCD436F727656726C6F" },
    { "Plugin Compatibility Class", "", "ABCDEF01C0DEF00D436F727656726C6F" },
};

constexpr int numClasses = 3;
constexpr int manyInstances = 0x7fffffff;

juce::String toHex (const TUID& id)
{
    return juce::String::toHexString (id, sizeof (TUID), 0).toUpperCase();
}

/** The bundle's moduleinfo.json, which has commas that JSON proper does not allow. */
juce::var readModuleInfo()
{
    const auto file = juce::File (VARLO_BUNDLE).getChildFile ("Contents/Resources/moduleinfo.json");
    const auto text = std::regex_replace (file.loadFileAsString().toStdString(), std::regex (",(\\s*[\\]}])"), "$1");
    return juce::JSON::parse (juce::String (text));
}

TEST (BundleFactory, HasThreeClassesUnderTheirFixedIds)
{
    const LoadedBundle bundle;
    ASSERT_NE (bundle.getFactory(), nullptr);
    ASSERT_EQ (bundle.getFactory()->countClasses(), numClasses);

    for (auto i = 0; i < numClasses; ++i)
    {
        PClassInfo2 info;
        ASSERT_EQ (bundle.getFactory()->getClassInfo2 (i, &info), kResultOk);

        const auto* expected = std::find_if (std::begin (expectedClasses), std::end (expectedClasses),
                                             [&] (const auto& other) { return toHex (info.cid) == other.classId; });
        ASSERT_NE (expected, std::end (expectedClasses)) << toHex (info.cid);

        EXPECT_STREQ (info.category, expected->category);
        EXPECT_STREQ (info.subCategories, expected->subCategories);
        EXPECT_STREQ (info.name, "Varlo");
        EXPECT_STREQ (info.vendor, "Corvane");
        EXPECT_STREQ (info.version, "1.0.0");
        EXPECT_STREQ (info.sdkVersion, "VST 3.7.12");
        EXPECT_EQ (info.cardinality, manyInstances);
        EXPECT_EQ (info.classFlags, 0u);
    }
}

TEST (BundleFactory, NamesTheMaker)
{
    const LoadedBundle bundle;
    ASSERT_NE (bundle.getFactory(), nullptr);

    PFactoryInfo info;
    ASSERT_EQ (bundle.getFactory()->getFactoryInfo (&info), kResultOk);
    EXPECT_STREQ (info.vendor, "Corvane");
}

TEST (BundleFactory, ComponentHasOneStereoBusEachWayAndNoEvents)
{
    const LoadedBundle bundle;
    auto* const component = bundle.getComponent();
    ASSERT_NE (component, nullptr);

    for (const auto& [direction, name] : { std::pair { Vst::kInput, "Input" }, { Vst::kOutput, "Output" } })
    {
        ASSERT_EQ (component->getBusCount (Vst::kAudio, direction), 1);
        EXPECT_EQ (component->getBusCount (Vst::kEvent, direction), 0);

        Vst::BusInfo info;
        ASSERT_EQ (component->getBusInfo (Vst::kAudio, direction, 0, info), kResultOk);
        EXPECT_EQ (juce::String (juce::CharPointer_UTF16 (
                       reinterpret_cast<const juce::CharPointer_UTF16::CharType*> (info.name))),
                   name);
        EXPECT_EQ (info.channelCount, 2);
        EXPECT_EQ (info.busType, (Vst::BusType) Vst::kMain);
        EXPECT_NE (info.flags & (uint32) Vst::BusInfo::kDefaultActive, 0u);
    }
}

TEST (BundleFactory, ModuleInfoSaysTheSame)
{
    const auto info = readModuleInfo();
    ASSERT_TRUE (info.isObject());
    EXPECT_EQ (info["Name"].toString(), "Varlo");
    EXPECT_EQ (info["Version"].toString(), "1.0.0");
    EXPECT_EQ (info["Factory Info"]["Vendor"].toString(), "Corvane");

    const auto& classes = info["Classes"];
    ASSERT_EQ (classes.size(), numClasses);

    for (auto i = 0; i < numClasses; ++i)
    {
        const auto& expected = expectedClasses[i];
        const auto& actual = classes[i];
        juce::StringArray subCategories;

        for (auto j = 0; j < actual["Sub Categories"].size(); ++j)
            subCategories.add (actual["Sub Categories"][j].toString());

        EXPECT_EQ (actual["Category"].toString(), expected.category);
        EXPECT_EQ (actual["CID"].toString(), expected.classId);
        EXPECT_EQ (subCategories.joinIntoString ("|"), expected.subCategories);
        EXPECT_EQ (actual["Name"].toString(), "Varlo");
        EXPECT_EQ (actual["Vendor"].toString(), "Corvane");
        EXPECT_EQ (actual["Version"].toString(), "1.0.0");
        EXPECT_EQ (actual["SDKVersion"].toString(), "VST 3.7.12");
        EXPECT_EQ ((int) actual["Class Flags"], 0);
        EXPECT_EQ ((int) actual["Cardinality"], manyInstances);
    }
}
} // namespace
} // namespace cv::varlo
