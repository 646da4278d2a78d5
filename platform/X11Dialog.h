#pragma once

#include "gui/Control.h"
#include "platform/X11Interface.h"
#include "platform/X11Keyboard.h"
#include "platform/X11NestedLoop.h"

#include <functional>
#include <memory>
#include <string>

namespace gui {

/// A window of ours over an editor, which does nothing else until it is answered. Fill it through `Ui`, then
/// run it. Thread: main.
class X11Dialog : private X11KeySink {
public:
    /// @param size  logical units
    X11Dialog(X11Interface& editor, Point size, const std::string& title);
    ~X11Dialog() override;

    /// False if the window couldn't be made.
    bool IsOpen() const { return ui != nullptr; }
    X11Interface& Ui() { return *ui; }
    /// Gets keys that no text field took; true takes one. Enter and Escape without it accept and cancel.
    std::function<bool(const X11Key& key)> OnKey;

    /// Runs until it is ended, with the editor's lock freed. True if it was accepted. Where the editor is
    /// destroyed meanwhile, it is false and the editor mustn't be touched.
    bool Run();
    void End(bool isAccepted);

private:
    bool TakeKey(const X11Key& key) override;

    X11Interface& owner;
    ServedLoop loop;
    std::unique_ptr<X11Interface> ui;
    std::unique_ptr<Control> background;
    bool ended = false;
    bool accepted = false;
};

}  // namespace gui
