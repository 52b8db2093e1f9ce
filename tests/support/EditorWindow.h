#pragma once

#include "support/FindComponent.h"
#include "support/TestProductEditor.h"

namespace cv::test
{
/** A product's editor, opened and closed as hosts do, in a window on the desktop. */
class EditorWindow
{
public:
    /** The product outlives the window. */
    explicit EditorWindow (TestProduct&);
    ~EditorWindow();

    pluginCore::PluginEditor* operator->() const noexcept { return editor.get(); }

    pluginCore::PluginEditor& operator*() const noexcept { return *editor; }

    /** The editor's first child of a type, at any depth; null if it has none. */
    template <typename Type>
    Type* find() const
    {
        return findComponent<Type> (*editor);
    }

    /** Drags the corner by so many logical pixels. */
    void dragCorner (juce::Point<int> distance) const;

private:
    TestProduct& product;
    std::unique_ptr<pluginCore::PluginEditor> editor;

    JUCE_DECLARE_NON_COPYABLE (EditorWindow)
};
} // namespace cv::test
