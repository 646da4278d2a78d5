#pragma once

#include "platform/X11Connection.h"
#include "platform/X11EventHandler.h"

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>

namespace gui {

class X11Interface;

/// The text that programs hand each other by copy and paste. Large ones go in pieces, both ways. Asking
/// another program for its text waits for the answer, but not for long. What was copied here outlives the
/// editor where there is anybody to keep it: the desktop's clipboard manager, or another editor.
class X11Clipboard : public X11EventHandler {
public:
    explicit X11Clipboard(X11Interface& ui);
    ~X11Clipboard() override;

    /// UTF-8; empty if there is none, or its owner doesn't answer.
    std::string GetText();
    void SetText(const std::string& text);
    /// Another program's data for one of its selections. None if there is none.
    std::optional<std::string> Fetch(xcb_atom_t selection, xcb_atom_t target, xcb_timestamp_t time);

    bool HandleEvent(const xcb_generic_event_t& event) override;

    static std::string FromLatin1(std::string_view text);
    /// Characters that Latin-1 lacks become "?".
    static std::string ToLatin1(const std::string& utf8);

private:
    /// A large text on its way to a program that takes it piece by piece.
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        std::string data;
        std::size_t sent = 0;
        std::uint32_t startMs = 0;
    };

    void HandOn();
    bool SaveAtManager();
    static std::optional<std::string> OwnedInProcess(xcb_window_t owner);
    void Answer(const xcb_selection_request_event_t& request);
    bool Deliver(const xcb_selection_request_event_t& request, xcb_atom_t property);
    void Send(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const std::string& data);
    bool Continue(const xcb_property_notify_event_t& notify);
    void DropStale();
    std::optional<std::string> FetchPieces(xcb_atom_t property);
    std::size_t PieceBytes() const;

    X11Interface& interface;
    xcb_window_t window;  // never shown: the editor's own may come and go
    std::string owned;
    bool isOwner = false;
    xcb_timestamp_t ownedSince = XCB_CURRENT_TIME;
    std::list<Transfer> transfers;
    X11Clipboard* nextOfProcess = nullptr;
};

}  // namespace gui
