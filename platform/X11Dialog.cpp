#include "platform/X11Dialog.h"

#include "platform/DialogStyle.h"
#include "platform/PipeSignalGuard.h"
#include "platform/X11Control.h"

namespace gui {

namespace {

/// The window's ground, with a line around it: not every window manager gives it a frame.
class Ground : public Control {
public:
    using Control::Control;
    void PaintContent(Canvas& canvas) override
    {
        canvas.FillRect(GetClientRect(), DialogStyle::border);
        canvas.FillRect(GetClientRect().Inset(1.0f), DialogStyle::background);
    }
};

}  // namespace

X11Dialog::X11Dialog(X11Interface& editor, Point size, const std::string& title) : owner(editor)
{
    X11Interface::Options options;
    options.size = size;
    options.scale = owner.Backing().Scale();
    options.transientFor = owner.Window().TopLevel();
    options.title = title;
    options.over = owner.Window().ScreenRect();
    ui = X11Interface::Open(loop, options, owner.Clock());
    if (!ui)
        return;
    background = std::make_unique<Ground>(*ui, &ui->Window());
    background->Opaque.assign(true);
    background->SetSize(size);
    background->Enabled.assign(false);
    ui->OnCloseRequested.setHandler(NotifyEvent::handler([this](void*) { End(false); }));
    ui->OnWindowLost.setHandler(NotifyEvent::handler([this](void*) { End(false); }));
    ui->Keyboard().SetSink(this);
}

X11Dialog::~X11Dialog() = default;

bool X11Dialog::Run()
{
    if (!ui || ended)
        return accepted;
    const PipeSignalGuard guard;
    const X11InputBlock block(ui.get());
    const RootControl::Suspension suspension(owner.Window());
    return X11NestedLoop::Run(owner, [this] { return ended; }) && accepted;
}

void X11Dialog::End(bool isAccepted)
{
    if (ended)
        return;
    ended = true;
    accepted = isAccepted;
}

bool X11Dialog::TakeKey(const X11Key& key)
{
    if (OnKey && OnKey(key))
        return true;
    if (key.symbol == XKB_KEY_Return || key.symbol == XKB_KEY_KP_Enter)
        End(true);
    else if (key.symbol == XKB_KEY_Escape)
        End(false);
    return true;
}

}  // namespace gui
