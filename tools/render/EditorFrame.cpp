#include "EditorFrame.h"

#include "RenderError.h"

namespace cv::render
{
EditorFrame::EditorFrame (juce::AudioPluginInstance& owner) : plugin (owner), editor (plugin.createEditorIfNeeded())
{
    if (editor == nullptr)
        throw RenderError (plugin.getName() + " has no editor");

    setName (plugin.getName());
    setOpaque (true);
    addAndMakeVisible (*editor);
    childBoundsChanged (editor.get());
}

EditorFrame::~EditorFrame()
{
    plugin.editorBeingDeleted (editor.get());
}

void EditorFrame::show()
{
    addToDesktop (juce::ComponentPeer::windowHasTitleBar | juce::ComponentPeer::windowAppearsOnTaskbar);
    setVisible (true);
}

void EditorFrame::setEditorSize (juce::Point<int> size)
{
    editor->setSize (size.x, size.y);
}

void EditorFrame::paint (juce::Graphics& g)
{
    // Seen for a moment, where the editor has not followed yet.
    g.fillAll (juce::Colours::black);
}

void EditorFrame::childBoundsChanged (juce::Component* child)
{
    setSize (child->getWidth(), child->getHeight());
}
} // namespace cv::render
