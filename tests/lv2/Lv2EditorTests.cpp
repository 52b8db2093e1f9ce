#include "lv2/Lv2Player.h"
#include "support/HostWindow.h"
#include "support/Signals.h"

#include <gtest/gtest.h>
#include <lv2/instance-access/instance-access.h>
#include <lv2/ui/ui.h>

#include <array>
#include <dlfcn.h>

namespace cv::varlo
{
namespace
{
constexpr auto sampleRateHz = 48000.0;
constexpr auto blockLength = 512;
constexpr auto limitMilliseconds = 60000;

/** The editor of an instance in a window of its host's, which gives it its time in turns. */
class Lv2Editor
{
public:
    Lv2Editor (Lv2Player& player, void* parentWindow)
        : features { { { LV2_INSTANCE_ACCESS_URI, lilv_instance_get_handle (player.getInstance()) },
                       { LV2_UI__parent, parentWindow },
                       { LV2_URID__map, player.getUriNumbers().getMap() } } }
    {
        const LV2_Feature* const list[] { &features[0], &features[1], &features[2], nullptr };
        const auto find = reinterpret_cast<LV2UI_DescriptorFunction> (dlsym (library, "lv2ui_descriptor"));
        descriptor = find != nullptr ? find (0) : nullptr;

        if (descriptor == nullptr)
            return;

        LV2UI_Widget widget = nullptr;
        handle = descriptor->instantiate (
            descriptor, "urn:corvane:varlo", VARLO_LV2_BUNDLE "/", [] (auto...) {}, this, &widget, list);
        idle = static_cast<const LV2UI_Idle_Interface*> (descriptor->extension_data (LV2_UI__idleInterface));
    }

    ~Lv2Editor()
    {
        if (handle != nullptr)
            descriptor->cleanup (handle);

        dlclose (library);
    }

    bool isUsable() const noexcept { return handle != nullptr && idle != nullptr; }

    void giveTime() { idle->idle (handle); }

private:
    // It is loaded already, for the sound.
    void* const library = dlopen (VARLO_LV2_BINARY, RTLD_NOW | RTLD_LOCAL);
    const std::array<LV2_Feature, 3> features;
    const LV2UI_Descriptor* descriptor = nullptr;
    const LV2UI_Idle_Interface* idle = nullptr;
    LV2UI_Handle handle = nullptr;

    JUCE_DECLARE_NON_COPYABLE (Lv2Editor)
};

TEST (Lv2EditorTest, OpensInItsHostsWindowAgainAndAgainWhileItPlays)
{
    Lv2World world;
    Lv2Player player (world, sampleRateHz, blockLength);
    ASSERT_TRUE (player.isUsable());
    const auto noise = test::makeNoise (2, blockLength, 0.5f);

    for (auto i = 0; i < 3; ++i)
    {
        const test::HostWindow window ({ 50, 60, 1050, 578 });
        ASSERT_TRUE (window.isOpen()) << "This needs a display.";
        Lv2Editor editor (player, window.getHandle());
        ASSERT_TRUE (editor.isUsable());
        const auto start = juce::Time::getMillisecondCounter();

        while (! window.showsAnother()
               && juce::Time::getMillisecondCounter() - start < (juce::uint32) limitMilliseconds)
        {
            auto buffer = noise;
            player.play (buffer, blockLength);
            editor.giveTime();
        }

        EXPECT_TRUE (window.showsAnother());
    }
}
} // namespace
} // namespace cv::varlo
