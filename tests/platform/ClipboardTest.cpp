#include "EditorFixture.h"
#include "platform/X11Clipboard.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace {

using ClipboardTest = EditorFixture;
using gui::X11Interface;

/// Another program's side of copy and paste.
struct OtherProgram {
    explicit OtherProgram(TestHost& on) : host(on), clipboard(host.Atom("CLIPBOARD")) {}

    void Own()
    {
        xcb_set_selection_owner(host, host.Window(), clipboard, XCB_CURRENT_TIME);
        host.Sync();
    }

    void Put(const xcb_selection_request_event_t& request, xcb_atom_t type, int format,
             const std::string& data)
    {
        xcb_change_property(host, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type,
                            static_cast<std::uint8_t>(format),
                            static_cast<std::uint32_t>(data.size()) * 8 / static_cast<std::uint32_t>(format),
                            data.data());
    }

    void Notify(const xcb_selection_request_event_t& request, bool has)
    {
        xcb_selection_notify_event_t answer{};
        answer.response_type = XCB_SELECTION_NOTIFY;
        answer.requestor = request.requestor;
        answer.selection = request.selection;
        answer.target = request.target;
        answer.property = has ? request.property : xcb_atom_t{0};
        xcb_send_event(host, 0, request.requestor, 0, reinterpret_cast<const char*>(&answer));
        host.Sync();
    }

    /// Answers one request for `target`, others with nothing; in pieces with a piece size above 0.
    void Serve(const char* target, const std::string& data, std::size_t piece = 0)
    {
        for (;;) {
            auto* request =
                reinterpret_cast<xcb_selection_request_event_t*>(host.WaitFor(XCB_SELECTION_REQUEST));
            if (!request)
                return;
            const bool has = request->target == host.Atom(target);
            if (has && piece)
                ServePieces(*request, data, piece);
            else if (has)
                Put(*request, request->target, 8, data);
            if (!(has && piece))
                Notify(*request, has);
            std::free(request);
            if (has)
                return;
        }
    }

    void ServePieces(const xcb_selection_request_event_t& request, const std::string& data, std::size_t piece)
    {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(host, request.requestor, XCB_CW_EVENT_MASK, &events);
        Put(request, host.Atom("INCR"), 32, std::string("\0\0\0\1", 4));
        Notify(request, true);
        // An empty piece ends it.
        for (std::size_t sent = 0; sent < data.size() + piece; sent += piece) {
            WaitForProperty(request.requestor, XCB_PROPERTY_DELETE);
            Put(request, request.target, 8, data.substr(std::min(sent, data.size()), piece));
            xcb_flush(host);
        }
    }

    bool WaitForProperty(xcb_window_t of, int state)
    {
        while (auto* event =
                   reinterpret_cast<xcb_property_notify_event_t*>(host.WaitFor(XCB_PROPERTY_NOTIFY))) {
            const bool fits = event->window == of && event->state == state;
            std::free(event);
            if (fits)
                return true;
        }
        return false;
    }

    /// What the owner of the clipboard gives for a target; "-" for nothing.
    std::string Fetch(const char* target)
    {
        const xcb_atom_t property = host.Atom("FETCHED");
        xcb_convert_selection(host, host.Window(), clipboard, host.Atom(target), property, XCB_CURRENT_TIME);
        xcb_flush(host);
        auto* notify = reinterpret_cast<xcb_selection_notify_event_t*>(host.WaitFor(XCB_SELECTION_NOTIFY));
        const bool has = notify && notify->property;
        std::free(notify);
        if (!has)
            return "-";
        if (TypeOf(property) != host.Atom("INCR"))
            return host.Property(host.Window(), "FETCHED", true);
        while (xcb_generic_event_t* old = host.Poll())
            std::free(old);
        host.Property(host.Window(), "FETCHED", true);
        std::string whole;
        while (WaitForProperty(host.Window(), XCB_PROPERTY_NEW_VALUE)) {
            const std::string piece = host.Property(host.Window(), "FETCHED", true);
            if (piece.empty())
                break;
            whole += piece;
        }
        return whole;
    }

    xcb_atom_t TypeOf(xcb_atom_t property)
    {
        auto* reply = xcb_get_property_reply(
            host, xcb_get_property(host, 0, host.Window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
            nullptr);
        const xcb_atom_t type = reply ? reply->type : xcb_atom_t{0};
        std::free(reply);
        return type;
    }

    TestHost& host;
    xcb_atom_t clipboard;
};

std::string longText()
{
    std::string text;
    for (int i = 0; text.size() < (1u << 20); ++i)
        text += "line " + std::to_string(i) + " \xC3\xA4\n";
    return text;
}

TEST_F(ClipboardTest, GivesItsTextInAllForms)
{
    Open();
    OtherProgram other(*host);
    ui->Platform().SetClipboardText("Gr\xC3\xBC\xC3\x9F"
                                    "e \xE2\x82\xAC");
    EXPECT_EQ(ui->Platform().GetClipboardText(), "Gr\xC3\xBC\xC3\x9F"
                                                 "e \xE2\x82\xAC");
    struct Row {
        const char* target;
        std::string text;
    };
    for (const Row& row : {Row{"UTF8_STRING", "Gr\xC3\xBC\xC3\x9F"
                                              "e \xE2\x82\xAC"},
                           Row{"STRING", "Gr\xFC\xDF"
                                         "e ?"},
                           Row{"TEXT", "Gr\xC3\xBC\xC3\x9F"
                                       "e \xE2\x82\xAC"},
                           Row{"image/png", "-"}}) {
        std::string fetched;
        std::atomic<bool> done = false;
        std::thread program([&] { fetched = other.Fetch(row.target), done = true; });
        EXPECT_TRUE(Until([&] { return done.load(); }));
        program.join();
        EXPECT_EQ(fetched, row.text) << row.target;
    }
}

TEST_F(ClipboardTest, LargeTextsGoInPiecesBothWays)
{
    Open();
    OtherProgram other(*host);
    const std::string text = longText();
    ui->Platform().SetClipboardText(text);
    std::string fetched;
    std::atomic<bool> done = false;
    std::thread taker([&] { fetched = other.Fetch("UTF8_STRING"), done = true; });
    EXPECT_TRUE(Until([&] { return done.load(); }));
    taker.join();
    EXPECT_TRUE(fetched == text);

    other.Own();
    std::thread giver([&] { other.Serve("UTF8_STRING", text, 100000); });
    EXPECT_TRUE(ui->Platform().GetClipboardText() == text);
    giver.join();
}

TEST_F(ClipboardTest, TakesOldProgramsTextAndHearsOfChanges)
{
    Open();
    int changes = 0;
    ui->OnClipboardChanged.setHandler(NotifyEvent::handler([&](void*) { ++changes; }));
    OtherProgram other(*host);
    other.Own();
    EXPECT_TRUE(Until([&] { return changes == 1; }));
    std::thread giver([&] { other.Serve("STRING", "caf\xE9"); });
    EXPECT_EQ(ui->Platform().GetClipboardText(), "caf\xC3\xA9");
    giver.join();
}

TEST_F(ClipboardTest, AnOwnerThatDoesntAnswerIsSoonGivenUp)
{
    Open();
    OtherProgram other(*host);
    other.Own();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ui->Platform().GetClipboardText(), "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    host->DestroyWindow();
    EXPECT_EQ(ui->Platform().GetClipboardText(), "");
}

TEST_F(ClipboardTest, EditorsOfOneThreadShareIt)
{
    Open();
    TestLoop otherLoop;
    gui::X11Interface::Options options;
    options.parent = host->Window();
    options.size = {50.0f, 50.0f};
    const auto second = gui::X11Interface::Open(otherLoop, options);
    ASSERT_TRUE(second);
    second->Platform().SetClipboardText("shared");
    EXPECT_EQ(ui->Platform().GetClipboardText(), "shared");
}

TEST_F(ClipboardTest, ItsTextOutlivesTheEditorThatItWasCopiedIn)
{
    const auto open = [&](TestLoop& in) {
        X11Interface::Options options;
        options.parent = host->Window();
        options.size = {50.0f, 50.0f};
        return X11Interface::Open(in, options);
    };
    TestLoop loops[2];
    auto first = open(loops[0]), second = open(loops[1]);
    first->Platform().SetClipboardText("kept");
    first.reset();
    EXPECT_EQ(second->Platform().GetClipboardText(), "kept") << "by the other editor";

    TestHost managerHost(TestHost::Shows::Window);
    OtherProgram manager(managerHost);
    xcb_set_selection_owner(managerHost, managerHost.Window(), managerHost.Atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    managerHost.Sync();
    std::string saved;
    std::thread desktop([&] {
        auto* request =
            reinterpret_cast<xcb_selection_request_event_t*>(managerHost.WaitFor(XCB_SELECTION_REQUEST));
        if (!request)
            return;
        EXPECT_EQ(request->target, managerHost.Atom("SAVE_TARGETS"));
        saved = manager.Fetch("UTF8_STRING");
        manager.Notify(*request, true);
        std::free(request);
    });
    second.reset();
    desktop.join();
    EXPECT_EQ(saved, "kept") << "by the desktop";
}

}  // namespace
