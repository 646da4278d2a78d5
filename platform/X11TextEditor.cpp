#include "platform/X11TextEditor.h"

#include "gui/InputFlags.h"
#include "gui/Text.h"
#include "platform/TextField.h"
#include "platform/X11Control.h"
#include "platform/X11Focus.h"

namespace gui {

namespace {

// What Ctrl and a letter type.
constexpr char ctrlA = 1, ctrlC = 3, ctrlV = 22, ctrlX = 24, ctrlZ = 26;

}  // namespace

X11TextEditor::X11TextEditor(X11Interface& ui) : TextEditor(ui), interface(ui) {}

X11TextEditor::~X11TextEditor()
{
    if (open)
        DestroyNative();
}

void X11TextEditor::CreateNative()
{
    Control* parent = backing ? backing.get() : &interface.GetRootControl();
    field = std::make_unique<TextField>(interface, parent, model, Font());
    const Point origin = backing ? Point{} : Bounds.value().Origin();
    field->Bounds.assign(Rect::At(origin, Bounds.value().Size()));
    field->SetAlignment(Alignment.value());
    field->SetPassword(Password.value());
    SetFocus();
}

void X11TextEditor::DestroyNative()
{
    if (interface.Keyboard().Sink() == this) {
        interface.Keyboard().SetSink(nullptr);
        interface.Focus().GiveBack();
    }
    field.reset();
}

void X11TextEditor::SetText(const std::string& text)
{
    model.SetText(text);
    if (field)
        field->ModelChanged();
}

void X11TextEditor::SetSelection(int first, int last)
{
    model.Select(first, last);
    if (field)
        field->ModelChanged();
}

void X11TextEditor::SetFocus()
{
    if (!field)
        return;
    interface.Focus().Take();
    interface.Keyboard().SetSink(this);
    field->ShowCaret(true);
}

void X11TextEditor::propertyChanged(AbstractProperty& property)
{
    TextEditor::propertyChanged(property);
    if (!field || &property != &Bounds)
        return;
    if (backing)
        backing->Bounds.assign(Bounds.value());
    field->Bounds.assign(Rect::At(backing ? Point{} : Bounds.value().Origin(), Bounds.value().Size()));
}

bool X11TextEditor::TakeKey(const X11Key& key)
{
    // The handlers may close the field, and delete it.
    switch (key.symbol) {
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
        OnReturn.fire(this);
        return true;
    case XKB_KEY_Escape:
        OnEscape.fire(this);
        return true;
    case XKB_KEY_Tab:
    case XKB_KEY_ISO_Left_Tab:
        if (TabAction.value() == TabAction::Event)
            OnTab.fire(this);
        return true;
    default:
        break;
    }
    if (Move(key)) {
        field->ModelChanged();
    } else if (!ReadOnly.value() && Edit(key)) {
        field->ModelChanged();
        OnChanged.fire(this);
    }
    return true;
}

bool X11TextEditor::Move(const X11Key& key)
{
    using Step = TextFieldModel::Step;
    const bool extends = key.flags & InputFlags::shift;
    const Step step = key.flags & InputFlags::ctrl ? Step::Word : Step::Character;
    switch (key.symbol) {
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
        model.Move(key.symbol == XKB_KEY_Right || key.symbol == XKB_KEY_KP_Right, step, extends);
        return true;
    case XKB_KEY_Home:
    case XKB_KEY_KP_Home:
    case XKB_KEY_Up:
    case XKB_KEY_End:
    case XKB_KEY_KP_End:
    case XKB_KEY_Down:
        model.Move(key.symbol == XKB_KEY_End || key.symbol == XKB_KEY_KP_End || key.symbol == XKB_KEY_Down,
                   Step::End, extends);
        return true;
    default:
        break;
    }
    if (key.text.size() != 1)
        return false;
    if (key.text[0] == ctrlA)
        model.Select(0, -1);
    else if (key.text[0] == ctrlC)
        CopySelection();
    else
        return false;
    return true;
}

bool X11TextEditor::Edit(const X11Key& key)
{
    using Step = TextFieldModel::Step;
    const Step step = key.flags & InputFlags::ctrl ? Step::Word : Step::Character;
    if (key.symbol == XKB_KEY_BackSpace)
        return model.Erase(false, step);
    if (key.symbol == XKB_KEY_Delete || key.symbol == XKB_KEY_KP_Delete)
        return model.Erase(true, step);
    if (key.text.size() == 1 && key.text[0] >= 0 && key.text[0] < ' ') {
        if (key.text[0] == ctrlV)
            return model.Insert(interface.Platform().GetClipboardText());
        if (key.text[0] == ctrlX)
            return CopySelection() && model.Erase(true, Step::Character);
        return key.text[0] == ctrlZ && model.Undo();
    }
    if (key.flags & (InputFlags::ctrl | InputFlags::alt | InputFlags::systemKey))
        return false;
    return model.Insert(key.text);
}

bool X11TextEditor::CopySelection()
{
    // A secret stays in its field.
    if (!model.HasSelection() || Password.value())
        return false;
    interface.Platform().SetClipboardText(model.SelectedText());
    return true;
}

void X11TextEditor::MousePressed(Point point)
{
    if (!staysOpen && !Bounds.value().Contains(point))
        Close();
}

void X11TextEditor::KeyboardLost()
{
    if (!staysOpen)
        Close();
}

}  // namespace gui
