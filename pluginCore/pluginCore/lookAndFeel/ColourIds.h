#pragma once

namespace cv::pluginCore
{
/** The colours of the framework's own components, to be set on a look-and-feel and read with findColour().
    Unscoped, since JUCE takes colour identifiers as plain ints.
*/
enum ColourIds
{
    changeLogBackgroundColourId = 0xc89320,
    changeLogTextColourId = 0xc89321,
    displayTextBackgroundColourId = 0xcbdef31,
    displayTextTextColourId = 0xcbdef32,
    panelBackgroundColourId = 0xc32aada,
    panelDimTextColourId = 0xc32aadb,
    panelTextColourId = 0xc32aadc,
    panelWarningColourId = 0xc32aadd,
    panelDarkBackgroundColourId = 0x6780200,
    headerBackgroundColourId = 0xc324433,
    controlPanelColourId = 0xc321192,
    controlPanelTextColourId = 0xc321193,
    presetsBarBackgroundColourId = 0xc19910
};
} // namespace cv::pluginCore
