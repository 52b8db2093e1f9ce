#include "support/EditorWindow.h"

#include "support/Mouse.h"

namespace cv::test
{
EditorWindow::EditorWindow (TestProduct& productToShow)
    : product (productToShow)
    , editor (dynamic_cast<pluginCore::PluginEditor*> (product.createEditorIfNeeded()))
{
    jassert (editor != nullptr);
    editor->addToDesktop (0);
    editor->setVisible (true);
}

EditorWindow::~EditorWindow()
{
    product.editorBeingDeleted (editor.get());
}

void EditorWindow::dragCorner (juce::Point<int> distance) const
{
    auto& corner = *find<juce::ResizableCornerComponent>();
    const auto target = (corner.getBounds().getCentre() + distance).toFloat();

    moveMouseTo (corner);
    pressMouseOn (corner);
    sendMouse (*editor, target, true);
    sendMouse (*editor, target, false);
}
} // namespace cv::test
