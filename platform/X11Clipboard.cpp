#include "platform/X11Clipboard.h"

#include "platform/X11Interface.h"
#include "platform/X11Keyboard.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <mutex>

namespace gui {

namespace {

// The editor stands still meanwhile.
constexpr int answerMs = 300;
constexpr int pieceMs = 300;
constexpr std::size_t mostBytes = std::size_t{64} << 20;
// A program that doesn't fetch its next piece for so long has gone.
constexpr std::uint32_t transferMs = 10000;

// Another editor of this process can't answer while this one waits for it on the same thread, so its text is
// looked up here. A plain list: nothing of it has to be destroyed when the module goes.
std::mutex processLock;
X11Clipboard* firstOfProcess = nullptr;

}  // namespace

X11Clipboard::X11Clipboard(X11Interface& ui) : interface(ui), window(xcb_generate_id(ui.Connection()))
{
    X11Connection& display = interface.Connection();
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(display, 0, window, display.RootWindow(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    if (display.Has().fixesEvent)
        xcb_xfixes_select_selection_input(display, window, display.Atom(X11Atom::ClipboardSelection),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const std::lock_guard guard(processLock);
    nextOfProcess = firstOfProcess;
    firstOfProcess = this;
}

X11Clipboard::~X11Clipboard()
{
    {
        const std::lock_guard guard(processLock);
        X11Clipboard** link = &firstOfProcess;
        while (*link != this)
            link = &(*link)->nextOfProcess;
        *link = nextOfProcess;
    }
    HandOn();
    xcb_destroy_window(interface.Connection(), window);
}

void X11Clipboard::HandOn()
{
    if (!isOwner || owned.empty() || interface.Connection().IsLost() || SaveAtManager())
        return;
    X11Clipboard* other = nullptr;
    {
        const std::lock_guard guard(processLock);
        other = firstOfProcess;
    }
    if (other)
        other->SetText(owned);
}

// The manager fetches the text as any program does, and then says that it has it.
bool X11Clipboard::SaveAtManager()
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t manager = display.Atom(X11Atom::ClipboardManager);
    const X11Reply<xcb_get_selection_owner_reply_t> keeper(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, manager), nullptr));
    if (!keeper || !keeper->owner)
        return false;
    const xcb_atom_t property = display.Atom(X11Atom::TransferProperty);
    display.SetProperty(window, property, XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::Utf8String)});
    xcb_convert_selection(display, window, manager, display.Atom(X11Atom::SaveTargets), property, ownedSince);
    const X11Event event = display.WaitFor(
        [&](const xcb_generic_event_t& candidate) {
            const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(candidate);
            if (EventKind(candidate) == XCB_SELECTION_NOTIFY)
                return notify.requestor == window && notify.selection == manager;
            if (EventKind(candidate) == XCB_SELECTION_REQUEST || EventKind(candidate) == XCB_PROPERTY_NOTIFY)
                HandleEvent(candidate);
            return false;
        },
        answerMs);
    return event && reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property;
}

std::optional<std::string> X11Clipboard::OwnedInProcess(xcb_window_t owner)
{
    const std::lock_guard guard(processLock);
    for (const X11Clipboard* each = firstOfProcess; each; each = each->nextOfProcess)
        if (each->window == owner && each->isOwner)
            return each->owned;
    return std::nullopt;
}

std::string X11Clipboard::GetText()
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t selection = display.Atom(X11Atom::ClipboardSelection);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, selection), nullptr));
    if (!owner || !owner->owner)
        return {};
    // The display's word: that another program took it over may not have been read yet.
    if (owner->owner == window)
        return owned;
    if (auto text = OwnedInProcess(owner->owner))
        return *std::move(text);
    const xcb_timestamp_t now = display.LastInputTime();
    if (const auto text = Fetch(selection, display.Atom(X11Atom::Utf8String), now))
        return *text;
    if (const auto text = Fetch(selection, XCB_ATOM_STRING, now))
        return FromLatin1(*text);
    return {};
}

void X11Clipboard::SetText(const std::string& text)
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t selection = display.Atom(X11Atom::ClipboardSelection);
    {
        const std::lock_guard guard(processLock);
        owned = text;
    }
    ownedSince = display.LastInputTime();
    xcb_set_selection_owner(display, window, selection, ownedSince);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, selection), nullptr));
    isOwner = owner && owner->owner == window;
}

std::optional<std::string> X11Clipboard::Fetch(xcb_atom_t selection, xcb_atom_t target, xcb_timestamp_t time)
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t property = display.Atom(X11Atom::TransferProperty);
    xcb_delete_property(display, window, property);
    xcb_convert_selection(display, window, selection, target, property, time);
    const X11Event event = display.WaitFor(
        [&](const xcb_generic_event_t& candidate) {
            const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(candidate);
            return EventKind(candidate) == XCB_SELECTION_NOTIFY && notify.requestor == window &&
                   notify.selection == selection && notify.target == target;
        },
        answerMs);
    if (!event || !reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property)
        return std::nullopt;
    auto value = display.GetProperty(window, property, true);
    if (value.format == 0)
        return std::nullopt;
    // Its removal told the owner to begin.
    return value.type == display.Atom(X11Atom::Incremental) ? FetchPieces(property)
                                                            : std::optional(std::move(value.bytes));
}

std::optional<std::string> X11Clipboard::FetchPieces(xcb_atom_t property)
{
    X11Connection& display = interface.Connection();
    std::string whole;
    while (whole.size() <= mostBytes) {
        const X11Event event = display.WaitFor(
            [&](const xcb_generic_event_t& candidate) {
                const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(candidate);
                return EventKind(candidate) == XCB_PROPERTY_NOTIFY && notify.window == window &&
                       notify.atom == property && notify.state == XCB_PROPERTY_NEW_VALUE;
            },
            pieceMs);
        if (!event)
            return std::nullopt;
        const auto piece = display.GetProperty(window, property, true);
        // The announcement of the whole may still be told of: it was taken already.
        if (piece.format == 0)
            continue;
        if (piece.bytes.empty())
            return whole;
        whole += piece.bytes;
    }
    return std::nullopt;
}

bool X11Clipboard::HandleEvent(const xcb_generic_event_t& event)
{
    X11Connection& display = interface.Connection();
    const int kind = EventKind(event);
    if (kind == XCB_SELECTION_REQUEST) {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == window)
            Answer(request);
        return request.owner == window;
    }
    if (kind == XCB_SELECTION_CLEAR) {
        const auto& clear = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        if (clear.owner != window)
            return false;
        const std::lock_guard guard(processLock);
        isOwner = false;
        owned.clear();
        return true;
    }
    if (kind == XCB_PROPERTY_NOTIFY)
        return Continue(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    if (!display.Has().fixesEvent || kind != display.Has().fixesEvent + XCB_XFIXES_SELECTION_NOTIFY)
        return false;
    interface.OnClipboardChanged.fire(&interface);
    return true;
}

void X11Clipboard::Answer(const xcb_selection_request_event_t& request)
{
    X11Connection& display = interface.Connection();
    DropStale();
    // Old programs name no place.
    const xcb_atom_t property = request.property ? request.property : request.target;
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = isOwner && Deliver(request, property) ? property : xcb_atom_t{XCB_ATOM_NONE};
    xcb_send_event(display, 0, request.requestor, 0, reinterpret_cast<const char*>(&answer));
    display.Flush();
}

bool X11Clipboard::Deliver(const xcb_selection_request_event_t& request, xcb_atom_t property)
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t utf8 = display.Atom(X11Atom::Utf8String);
    const xcb_atom_t plain = display.Atom(X11Atom::PlainText);
    const xcb_atom_t text = display.Atom(X11Atom::Text);
    if (request.target == display.Atom(X11Atom::Targets)) {
        display.SetProperty(request.requestor, property, XCB_ATOM_ATOM,
                            std::vector<std::uint32_t>{display.Atom(X11Atom::Targets),
                                                       display.Atom(X11Atom::Timestamp), utf8, plain, text,
                                                       XCB_ATOM_STRING});
        return true;
    }
    if (request.target == display.Atom(X11Atom::Timestamp)) {
        display.SetProperty(request.requestor, property, XCB_ATOM_INTEGER,
                            std::vector<std::uint32_t>{ownedSince});
        return true;
    }
    if (request.target == utf8 || request.target == text)
        Send(request.requestor, property, utf8, owned);
    else if (request.target == plain)
        Send(request.requestor, property, plain, owned);
    else if (request.target == XCB_ATOM_STRING)
        Send(request.requestor, property, XCB_ATOM_STRING, ToLatin1(owned));
    else
        return false;
    return true;
}

void X11Clipboard::Send(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const std::string& data)
{
    X11Connection& display = interface.Connection();
    if (data.size() <= PieceBytes()) {
        display.SetProperty(requestor, property, type, data);
        return;
    }
    // Each removal of the property asks for the next piece.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(display, requestor, XCB_CW_EVENT_MASK, &events);
    display.SetProperty(requestor, property, display.Atom(X11Atom::Incremental),
                        std::vector<std::uint32_t>{static_cast<std::uint32_t>(data.size())});
    transfers.push_back({requestor, property, type, data, 0, interface.Clock()()});
}

bool X11Clipboard::Continue(const xcb_property_notify_event_t& notify)
{
    if (notify.state != XCB_PROPERTY_DELETE)
        return false;
    const auto found = std::find_if(transfers.begin(), transfers.end(), [&](const Transfer& transfer) {
        return transfer.requestor == notify.window && transfer.property == notify.atom;
    });
    if (found == transfers.end())
        return false;
    const std::size_t length = std::min(PieceBytes(), found->data.size() - found->sent);
    interface.Connection().SetProperty(found->requestor, found->property, found->type,
                                       found->data.substr(found->sent, length));
    interface.Connection().Flush();
    found->sent += length;
    found->startMs = interface.Clock()();
    // The empty piece was the last.
    if (length == 0)
        transfers.erase(found);
    return true;
}

void X11Clipboard::DropStale()
{
    transfers.remove_if([now = interface.Clock()()](const Transfer& transfer) {
        return now - transfer.startMs > transferMs;
    });
}

std::size_t X11Clipboard::PieceBytes() const
{
    const std::size_t words = xcb_get_maximum_request_length(interface.Connection());
    return std::min<std::size_t>(words * 4 / 2, 256 * 1024);
}

std::string X11Clipboard::FromLatin1(std::string_view text)
{
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | byte >> 6);
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

std::string X11Clipboard::ToLatin1(const std::string& utf8)
{
    std::string text;
    for (const char32_t point : X11Keyboard::CodePoints(utf8))
        text += point < 0x100 ? static_cast<char>(point) : '?';
    return text;
}

}  // namespace gui
