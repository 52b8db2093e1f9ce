#include "settings/PluginGlobalSettings.h"

#include "sharing/SharedInstance.h"
#include "state/TreeXml.h"
#include "state/XmlText.h"

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
} // namespace

PluginGlobalSettings::InnerData::InnerData (const ProductInfo& product) : file (makeOptions (product))
{
    if (const auto xml = parseXmlText (file.getValue (settingsKeys::settings)))
        settingsValues = treeFromXml (*xml);
}

PluginGlobalSettings::InnerData::~InnerData()
{
    const auto xml = settingsValues.createXml();
    file.setValue (settingsKeys::settings, xml != nullptr ? xml->toString() : juce::String());
    file.saveIfNeeded();
}

std::shared_ptr<PluginGlobalSettings::InnerData> PluginGlobalSettings::getInnerData (const ProductInfo& product)
{
    return SharedInstance<InnerData>::get (product);
}
} // namespace cv::pluginCore
