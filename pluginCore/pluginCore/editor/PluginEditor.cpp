#include "pluginCore/editor/PluginEditor.h"

#include "pluginCore/processor/PluginProcessor.h"

namespace cv::pluginCore
{
namespace
{
constexpr juce::int64 dayMilliseconds = 86400000;
constexpr juce::int64 weekMilliseconds = 7 * dayMilliseconds;
constexpr int checkerEndMilliseconds = 50;
constexpr int moveDetectorMilliseconds = 59;

constexpr int firstWidth = 1050;
constexpr int firstHeight = 900;
constexpr float resizerProportion = 0.05f;

// What stays free of the display, for the host's title bar and borders.
constexpr int maxHeightMargin = 90;
constexpr int forcedHeightMargin = 100;
constexpr int forcedWidthMargin = 10;

const juce::Identifier defaultWidthKey { "defaultWidth" };
const juce::Identifier defaultHeightKey { "defaultHeight" };

int firstAboveZero (int first, int second, int fallBack)
{
    if (first > 0)
        return first;

    return second > 0 ? second : fallBack;
}
} // namespace

PluginEditor::PluginEditor (PluginProcessor& processorToEdit)
    : AudioProcessorEditor (processorToEdit)
    , globalSettings (processorToEdit.getGlobalSettings())
    , pluginProcessor (processorToEdit)
    , checkForUpdates (getSetting (settingsKeys::checkForUpdates, "1") == "1")
    , lastVersionCheck (getSetting (settingsKeys::lastVersionCheck, {}).getLargeIntValue())
    , lastChangeLogTime (getSetting (settingsKeys::lastChangeLogTime, {}).getLargeIntValue())
    , updateChecker (processorToEdit.getVersionString())
{
    moveDetector.startTimer (moveDetectorMilliseconds);
    moveDetector.addListener (this);

    setConstrainer (&sizeConstrainer);
    setResizable (true, false);
    addAndMakeVisible (cornerResizer);
    cornerResizer.setAccessible (false); // it takes the mouse alone
    cornerResizer.setAlwaysOnTop (true);

    addComponentListener (&editorListener);
    updateChecker.addListener (this);

    changeLogView.onClose = [this] { hideChangeLog(); };
    changeLogView.onDownload = changeLogView.onClose;
    addChildComponent (changeLogView);
    addMouseListener (this, true);
}

PluginEditor::~PluginEditor()
{
    removeComponentListener (&editorListener);
    updateChecker.removeListener (this);
    juce::PopupMenu::dismissAllActiveMenus();
    setConstrainer (nullptr);
}

void PluginEditor::open()
{
    askForUpdates();
    changeLogView.downloadUrl = juce::URL (pluginProcessor.getProductUrl());
    takeRememberedSize();
    sendLookAndFeelChange();
    focusRing.watchControls();
}

void PluginEditor::askForUpdates()
{
    updateChecker.url = juce::URL (pluginProcessor.getReleaseNotesUrl());
    const auto isDue = juce::Time::currentTimeMillis() - dayMilliseconds >= lastVersionCheck;

    if (checkForUpdates && isDue && ! pluginProcessor.isBetaBuild())
        updateChecker.startThread (juce::Thread::Priority::normal);
}

void PluginEditor::takeRememberedSize()
{
    const auto width =
        firstAboveZero (pluginProcessor.getEditorWidth(), getSetting (defaultWidthKey, "-1").getIntValue(), firstWidth);
    const auto height = firstAboveZero (pluginProcessor.getEditorHeight(),
                                        getSetting (defaultHeightKey, "-1").getIntValue(), firstHeight);
    setBounds (getX(), getY(), width, height);

    if (auto* limiter = getConstrainer())
    {
        const auto limits = getEditorSizeLimits();
        limiter->setSizeLimits (limits.minWidth, limits.minHeight, limits.maxWidth, limits.maxHeight);
        limiter->setFixedAspectRatio (getEditorAspectRatio());
        limiter->setBoundsForComponent (this, getBounds(), false, false, false, false);
    }
}

int PluginEditor::getResizerSize() const
{
    return juce::roundToInt ((float) getHeight() * resizerProportion);
}

void PluginEditor::versionCheckFinished (UpdateChecker& checker,
                                         bool updateAvailable,
                                         juce::int64 releaseTimeMilliseconds)
{
    // The server's time may be anything, so nothing is added to it.
    const auto now = juce::Time::currentTimeMillis();
    const auto isFresh = now - dayMilliseconds < releaseTimeMilliseconds;
    const auto isLongAgo = now - weekMilliseconds > lastChangeLogTime;

    if (updateAvailable && (isFresh || isLongAgo))
    {
        setSetting (settingsKeys::lastChangeLogTime, now);
        checker.waitForThreadToExit (checkerEndMilliseconds);
        checker.changeLogMode = true;
        checker.startThread (juce::Thread::Priority::normal);
    }

    setSetting (settingsKeys::lastVersionCheck, now);
}

void PluginEditor::changeLogReady (UpdateChecker&, const juce::String& text)
{
    if (changeLogView.setChangeLog (text))
        showChangeLog();
}

void PluginEditor::hostFocusChanged (PluginMoveDetector&, bool lostForeground)
{
    if (lostForeground)
        juce::PopupMenu::dismissAllActiveMenus();
}

void PluginEditor::pluginMoved (PluginMoveDetector&)
{
    juce::PopupMenu::dismissAllActiveMenus();
}

void PluginEditor::focusLost (FocusChangeType)
{
    juce::PopupMenu::dismissAllActiveMenus();
}

int PluginEditor::getControlParameterIndex (juce::Component& component)
{
    const auto* parameter = pluginProcessor.getValueTreeState().getParameter (component.getComponentID());
    return parameter != nullptr ? parameter->getParameterIndex() : -1;
}

void PluginEditor::PluginEditorListener::componentMovedOrResized (juce::Component&, bool, bool wasResized)
{
    if (wasResized)
        editor.editorResized();
}

void PluginEditor::editorResized()
{
    if (auto* look = dynamic_cast<LookAndFeel*> (&getLookAndFeel()))
    {
        look->editorWidth = getWidth();
        look->editorHeight = getHeight();
    }

    changeLogView.setBounds (getLocalBounds());

    if (! fitIntoDisplay())
        return;

    juce::PopupMenu::dismissAllActiveMenus();

    // Asked before the corner moves away from under the mouse.
    const auto isDragged = cornerResizer.isMouseOverOrDragging (false);
    placeCornerResizer();
    rememberSize (isDragged);
}

/** False when the editor was too large; it has been resized, and all else done, by the time this returns. */
bool PluginEditor::fitIntoDisplay()
{
    const auto* display = juce::Desktop::getInstance().getDisplays().getDisplayForPoint (getPosition());
    const auto displayWidth = display != nullptr ? display->userArea.getWidth() : 0;
    const auto displayHeight = display != nullptr ? display->userArea.getHeight() : 0;
    const auto aspectRatio = getEditorAspectRatio();

    if (auto* limiter = getConstrainer())
    {
        limiter->setMaximumSize (displayWidth, displayHeight - maxHeightMargin);
        limiter->setFixedAspectRatio (aspectRatio);
    }

    if (getWidth() > displayWidth)
    {
        const auto width = displayWidth - forcedWidthMargin;
        setBounds (getX(), getY(), width, juce::roundToInt (width / aspectRatio));
        return false;
    }

    if (getHeight() > displayHeight)
    {
        const auto height = displayHeight - forcedHeightMargin;
        setBounds (getX(), getY(), juce::roundToInt (aspectRatio * height), height);
        return false;
    }

    return true;
}

void PluginEditor::placeCornerResizer()
{
    const auto size = getResizerSize();
    cornerResizer.setBounds (getWidth() - size, getHeight() - size, size, size);
}

void PluginEditor::rememberSize (bool asDefault)
{
    pluginProcessor.setEditorSize (getWidth(), getHeight());

    if (asDefault)
    {
        setSetting (defaultWidthKey, getWidth());
        setSetting (defaultHeightKey, getHeight());
    }
}

void PluginEditor::showChangeLog()
{
    changeLogView.toFront (true);
    changeLogView.setVisible (true);

    for (auto* child : getChildren())
        child->setEnabled (child == &changeLogView);
}

void PluginEditor::hideChangeLog()
{
    const auto hadKeyboard = changeLogView.hasKeyboardFocus (true);
    changeLogView.setVisible (false);

    for (auto* child : getChildren())
        child->setEnabled (true);

    if (hadKeyboard)
        grabKeyboardFocus();
}

juce::String PluginEditor::getSetting (const juce::Identifier& key, const juce::String& defaultText) const
{
    return globalSettings.getValues().getProperty (key, defaultText).toString();
}

void PluginEditor::setSetting (const juce::Identifier& key, juce::int64 value)
{
    globalSettings.getValues().setProperty (key, juce::String (value), nullptr);
}
} // namespace cv::pluginCore
