#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** What the framework has to know of the product that it runs in. */
struct ProductInfo
{
    /** The display name, as hosts show it. */
    juce::String name;

    /** Three numbers with points between them, "1.0.0", without a mark for a beta. */
    juce::String version;

    /** The maker; also the name of the folder that its products share. */
    juce::String company;

    /** The maker's web site, an address without a path. */
    juce::String companyWebSite {};
};
} // namespace cv::pluginCore
