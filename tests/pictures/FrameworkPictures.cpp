#include "pictures/Picture.h"
#include "support/PresetSandbox.h"
#include "support/TestProductEditor.h"

#include <iostream>

namespace cv::test
{
namespace
{
/** Shows the framework's window around the smallest product: as it opens, and with news of a version. */
bool writePictures (const juce::File& folder)
{
    const PresetSandbox sandbox;
    TestProduct product (sandbox.getLocations());
    product.initialise();
    product.getGlobalSettings().getValues().setProperty ("checkForUpdates", "0", nullptr);
    product.getPresetsManager().savePreset (sandbox.getLocations().userFolder.getChildFile ("Slapback.test"), true);
    product.set ("level", 60.0f);

    const std::unique_ptr<juce::AudioProcessorEditor> editor (product.createEditor());
    auto& frame = dynamic_cast<pluginCore::PluginEditor&> (*editor);
    frame.setSize (1050, 525);

    // The bar shows the preset's name with the next message.
    juce::MessageManager::callAsync ([] { juce::MessageManager::getInstance()->stopDispatchLoop(); });
    juce::MessageManager::getInstance()->runDispatchLoop();

    if (! writePicture (*editor, folder.getChildFile ("framework-window.png")))
        return false;

    pluginCore::UpdateChecker checker (product.getVersionString());
    frame.changeLogReady (checker,
                          "2.4.0\n\n- Presets may lie in folders of their own.\n- The window remembers its size.");
    return writePicture (*editor, folder.getChildFile ("framework-update.png"));
}
} // namespace
} // namespace cv::test

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;

    if (argc != 2)
    {
        std::cerr << "usage: cv_framework_pictures FOLDER" << std::endl;
        return 2;
    }

    const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argv[1]));

    if (! folder.isDirectory() || ! cv::test::writePictures (folder))
    {
        std::cerr << "cv_framework_pictures: can't write into " << folder.getFullPathName() << std::endl;
        return 1;
    }

    return 0;
}
