#include "platform/X11MessageBox.h"

#include "platform/DialogControls.h"
#include "platform/X11Control.h"
#include "platform/X11Dialog.h"

#include <algorithm>

namespace gui {

namespace {

// Logical units.
constexpr float boxMargin = 16.0f;
constexpr float textWidth = 380.0f;
constexpr float leastWidth = 240.0f;
constexpr Point answerSize{84.0f, 26.0f};

}  // namespace

bool X11MessageBox::Show(X11Interface& owner, const std::string& text, int flags)
{
    using MessageButton = PlatformDelegate::MessageButton;
    if (owner.IsWindowLost())
        return false;
    const bool asks = (flags & MessageButton::ok) && (flags & MessageButton::cancel);
    Point needed;
    {
        const DialogText measure(owner, nullptr, text, textWidth);
        needed = measure.GetSize();
    }
    const Point size{std::max(needed.x + 2.0f * boxMargin, leastWidth),
                     needed.y + answerSize.y + 3.0f * boxMargin};
    X11Dialog dialog(owner, size, asks ? "Confirmation" : "Information");
    if (!dialog.IsOpen())
        return false;
    const bool canAccept = asks || !(flags & MessageButton::cancel);
    X11Interface& ui = dialog.Ui();
    Control& root = ui.Window();
    DialogText message(ui, &root, text, textWidth);
    message.SetPosition({boxMargin, boxMargin});
    DialogButton accept(ui, &root, canAccept ? "OK" : "Cancel", [&] { dialog.End(canAccept); });
    accept.SetDefault(true);
    float x = size.x - boxMargin - answerSize.x;
    const float y = size.y - boxMargin - answerSize.y;
    DialogButton cancel(ui, asks ? &root : nullptr, "Cancel", [&] { dialog.End(false); });
    cancel.SetBounds(x, y, answerSize.x, answerSize.y);
    if (asks)
        x -= answerSize.x + boxMargin * 0.5f;
    accept.SetBounds(x, y, answerSize.x, answerSize.y);
    dialog.OnKey = [&](const X11Key& key) {
        const bool enter =
            key.symbol == XKB_KEY_Return || key.symbol == XKB_KEY_KP_Enter || key.symbol == XKB_KEY_space;
        if (enter)
            dialog.End(canAccept);
        return enter;
    };
    return dialog.Run();
}

}  // namespace gui
