#include "pluginCore/editor/FocusRing.h"

#include <algorithm>

namespace cv::pluginCore
{
namespace
{
/** Not so those that are the host's or a text's: who starts the transport doesn't look for a control. */
bool findsTheWay (const juce::KeyPress& key)
{
    static const std::initializer_list<int> keyCodes {
        juce::KeyPress::tabKey,    juce::KeyPress::returnKey,   juce::KeyPress::escapeKey, juce::KeyPress::deleteKey,
        juce::KeyPress::upKey,     juce::KeyPress::downKey,     juce::KeyPress::leftKey,   juce::KeyPress::rightKey,
        juce::KeyPress::pageUpKey, juce::KeyPress::pageDownKey, juce::KeyPress::homeKey,   juce::KeyPress::endKey
    };

    return std::any_of (keyCodes.begin(), keyCodes.end(), [&] (int keyCode) { return key.isKeyCode (keyCode); });
}

bool isTypedInto (const juce::Component& component)
{
    const auto* const textEditor = dynamic_cast<const juce::TextEditor*> (&component);
    return textEditor != nullptr && ! textEditor->isReadOnly();
}
} // namespace

FocusRing::FocusRing (juce::Component& windowContent) : content (windowContent)
{
    content.addMouseListener (this, true);
    juce::Desktop::getInstance().addFocusChangeListener (this);
}

FocusRing::~FocusRing()
{
    juce::Desktop::getInstance().removeFocusChangeListener (this);
    content.removeMouseListener (this);

    for (const auto& control : watched)
        if (control != nullptr)
            control->removeKeyListener (this);
}

void FocusRing::watchControls()
{
    watchControlsIn (content);
}

void FocusRing::watchControlsIn (juce::Component& parent)
{
    for (auto* const child : parent.getChildren())
    {
        if (child->getWantsKeyboardFocus())
        {
            child->addKeyListener (this);
            watched.emplace_back (child);
        }

        watchControlsIn (*child);
    }
}

bool FocusRing::keyPressed (const juce::KeyPress& key, juce::Component*)
{
    if (findsTheWay (key))
    {
        isKeyboardInUse = true;

        // Tab is still to move the focus.
        triggerAsyncUpdate();
    }

    return false;
}

void FocusRing::mouseDown (const juce::MouseEvent&)
{
    isKeyboardInUse = false;
    handleAsyncUpdate();
}

void FocusRing::globalFocusChanged (juce::Component*)
{
    handleAsyncUpdate();
}

void FocusRing::handleAsyncUpdate()
{
    auto* const newOwner = findOwner();

    if (newOwner != nullptr && newOwner == owner)
        return;

    owner = newOwner;
    outline.reset();

    if (owner != nullptr)
        outline = owner->getLookAndFeel().createFocusOutlineForComponent (*owner);

    if (outline != nullptr)
        outline->setOwner (owner);
}

juce::Component* FocusRing::findOwner() const
{
    auto* const focused = juce::Component::getCurrentlyFocusedComponent();
    const auto hasRing =
        isKeyboardInUse && focused != nullptr && content.isParentOf (focused) && ! isTypedInto (*focused);

    return hasRing ? focused : nullptr;
}
} // namespace cv::pluginCore
