#pragma once

#include "gui/Geometry.h"
#include "platform/Release.h"
#include "platform/X11EventHandler.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace gui {

class X11Interface;

/// A key that went down, as the user's keyboard layout has it.
struct X11Key {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    std::string text;  // UTF-8 of what it types, after dead keys; control characters with Ctrl
    int flags = 0;     // modifiers
};

/// Gets keys before the tree does, as a text field or a menu.
class X11KeySink {
public:
    virtual ~X11KeySink() = default;
    /// True if it was taken.
    virtual bool TakeKey(const X11Key& key) = 0;
    /// A button went down at a point of the root's; the tree hears of it next.
    virtual void MousePressed(Point) {}
    /// Another window has the keyboard now.
    virtual void KeyboardLost() {}
};

/// The keyboard, while the interface has it.
class X11Keyboard : public X11EventHandler {
public:
    explicit X11Keyboard(X11Interface& ui);
    ~X11Keyboard() override;

    /// Null for none. The sink outlives its being set.
    void SetSink(X11KeySink* newSink) { sink = newSink; }
    X11KeySink* Sink() const { return sink; }
    /// The modifier flags as they are now, also while others have the keyboard. None if the display tells
    /// only those who have it.
    std::optional<int> Modifiers() const { return modifiers; }
    /// A press by the layout. Dead keys and the like give a key without text until they are done.
    X11Key Translate(const xcb_key_press_event_t& event);

    bool HandleEvent(const xcb_generic_event_t& event) override;

    /// The code points of UTF-8; damaged text ends it.
    static std::vector<char32_t> CodePoints(const std::string& utf8);

private:
    void SelectEvents();
    void ReadLayout();
    void MakeCompose();
    bool HandleLayoutEvent(const xcb_generic_event_t& event);
    void Pressed(const xcb_key_press_event_t& event);
    bool OfferKey(const X11Key& key);
    bool OfferToTree(const X11Key& key);

    X11Interface& interface;
    std::unique_ptr<xkb_context, Release<xkb_context_unref>> context;
    std::unique_ptr<xkb_keymap, Release<xkb_keymap_unref>> layout;
    std::unique_ptr<xkb_state, Release<xkb_state_unref>> state;
    std::unique_ptr<xkb_compose_state, Release<xkb_compose_state_unref>> compose;
    X11KeySink* sink = nullptr;
    std::optional<int> modifiers;
    std::vector<xcb_keycode_t> handedOver;  // keys that went down for the host
};

}  // namespace gui
