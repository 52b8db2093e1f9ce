#include "pluginCore/presets/LastPreset.h"

#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
namespace
{
const juce::String elementName = "lastPreset";

namespace attributes
{
const juce::Identifier root { "root" };
const juce::Identifier path { "path" };
const juce::Identifier dirty { "dirty" };
} // namespace attributes

/** No file lies at a longer one on any system; Windows allows the most. JUCE takes seconds to resolve a path
    with a hundred thousand levels.
*/
constexpr int maxPathCharacters = 32767;

/** The file at a path beneath a folder. JUCE takes a leading tilde for somebody's home, but it may as well
    begin a preset's name.
*/
juce::File resolve (const juce::File& folder, const juce::String& path)
{
    return folder.getChildFile (path.startsWithChar ('~') ? "./" + path : path);
}
} // namespace

std::unique_ptr<juce::XmlElement> createLastPresetXml (const PresetsManager& presets)
{
    const auto file = presets.getCurrentPresetFile();

    if (file == juce::File())
        return {};

    auto xml = std::make_unique<juce::XmlElement> (elementName);
    juce::String path;

    if (const auto bank = presets.getLocations().findBankOf (file))
    {
        xml->setAttribute (attributes::root, getPresetBankName (*bank));
        path = file.getRelativePathFrom (presets.getLocations().getFolder (*bank));
    }

    xml->setAttribute (attributes::path, path);
    xml->setAttribute (attributes::dirty, presets.isDirty() ? 1 : 0);
    return xml;
}

LastPreset readLastPresetXml (const juce::XmlElement& projectXml, const PresetLocations& locations)
{
    const auto* xml = findChildElement (projectXml, elementName);

    if (xml == nullptr)
        return {};

    LastPreset lastPreset;

    const auto& path = xml->getStringAttribute (attributes::path);

    if (const auto bank = findPresetBank (xml->getStringAttribute (attributes::root));
        bank.has_value() && path.length() <= maxPathCharacters)
        lastPreset.file = resolve (locations.getFolder (*bank), path);

    if (xml->hasAttribute (attributes::dirty))
        lastPreset.dirty = xml->getBoolAttribute (attributes::dirty);

    return lastPreset;
}
} // namespace cv::pluginCore
