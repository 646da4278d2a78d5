#include "gui/TextEditor.h"

#include "gui/RootControl.h"
#include "gui/Text.h"
#include "gui/UserInterface.h"

namespace gui {

TextEditor::TextEditor(UserInterface& ui) : Component(ui), font(ui.Platform().CreateText()) {}

TextEditor::~TextEditor() = default;

bool TextEditor::Open(const std::string& text, const Rect& rect)
{
    if (open || !userInterface.IsMainThread())
        return false;
    Bounds.assign(rect);
    if (CreatesBacking.value()) {
        backing = std::make_unique<Control>(userInterface, &userInterface.GetRootControl());
        backing->SetBounds(rect);
    }
    open = true;
    CreateNative();
    SetText(text);
    if (SelectsAllOnOpen.value())
        SetSelection(0, -1);
    return true;
}

void TextEditor::Close()
{
    if (!open)
        return;
    open = false;
    DestroyNative();
    backing.reset();
    userInterface.GetRootControl().Invalidate(Bounds.value());
    OnClosed.fire(this);
}

}  // namespace gui
