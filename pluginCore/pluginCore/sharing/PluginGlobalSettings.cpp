#include "pluginCore/sharing/PluginGlobalSettings.h"

#include "pluginCore/sharing/SettingsFileGuard.h"
#include "pluginCore/sharing/SharedInstance.h"
#include "pluginCore/state/TreeXml.h"
#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
namespace
{
juce::PropertiesFile::Options makeOptions (const ProductInfo& product)
{
    juce::PropertiesFile::Options options;
    options.applicationName = product.name;
    options.filenameSuffix = "settings";
    options.folderName = product.company + juce::File::getSeparatorString() + product.name;
    options.osxLibrarySubFolder = "Application Support";
    options.millisecondsBeforeSaving = 10;
    options.storageFormat = juce::PropertiesFile::storeAsXML;
    return options;
}

void writeValues (juce::PropertiesFile& file, const juce::ValueTree& values)
{
    const auto xml = values.createXml();
    file.setValue (settingsKeys::settings, xml != nullptr ? xml->toString() : juce::String());
    file.saveIfNeeded();
}
} // namespace

PluginGlobalSettings::InnerData::InnerData (const ProductInfo& product) : InnerData (makeOptions (product)) {}

PluginGlobalSettings::InnerData::InnerData (const juce::PropertiesFile::Options& fileOptions)
    : file (isReadableSettingsFile (fileOptions.getDefaultFile()) ? fileOptions.getDefaultFile() : juce::File(),
            fileOptions)
    , options (fileOptions)
{
    if (const auto xml = parseXmlText (file.getValue (settingsKeys::settings)))
        settingsValues = treeFromXml (*xml);

    removeUnreadableValues (file, settingsKeys::settings);
    valuesOnDisk = settingsValues.createCopy();
}

PluginGlobalSettings::InnerData::~InnerData()
{
    const auto place = options.getDefaultFile();

    if (place.exists() && settingsValues.isEquivalentTo (valuesOnDisk))
        return;

    if (file.getFile() == place)
    {
        writeValues (file, settingsValues);
    }
    else if (! place.isDirectory() && place.deleteFile())
    {
        // Nothing of the file there was read, so nothing of it is kept.
        juce::PropertiesFile replacement (options);
        writeValues (replacement, settingsValues);
    }
}

std::shared_ptr<PluginGlobalSettings::InnerData> PluginGlobalSettings::getInnerData (const ProductInfo& product)
{
    return SharedInstance<InnerData>::get (product);
}
} // namespace cv::pluginCore
