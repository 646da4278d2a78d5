#include "EditorFixture.h"
#include "platform/X11FileDrop.h"

#include <cstring>
#include <thread>

namespace {

class FileDropTest : public EditorFixture, public gui::UserInterface::Listener {
protected:
    using Message = std::array<std::uint32_t, 5>;

    void OpenForDrops()
    {
        Open(2.0f);
        ui->AddListener(*this);
        ui->AcceptsFileDrops.assign(true);
        ui->Connection().Flush();
        EXPECT_TRUE(TestHost::Wait([&] { return !host->Property(host->Window(), "XdndProxy").empty(); }));
    }
    void FilesDropped(gui::Point point, const std::string& path) override
    {
        dropped.push_back({point, path});
    }

    /// As a source sends it: to the window that the drag's target names as its proxy.
    void Send(const char* type, const Message& data)
    {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = host->Window();
        message.type = host->Atom(type);
        for (std::size_t i = 0; i < data.size(); ++i)
            message.data.data32[i] = data[i];
        const std::string proxy = host->Property(host->Window(), "XdndProxy");
        xcb_window_t to = 0;
        std::memcpy(&to, proxy.data(), std::min<std::size_t>(proxy.size(), 4));
        xcb_send_event(source, 0, to, 0, reinterpret_cast<const char*>(&message));
        source.Sync();
    }
    Message Answer(const char* type)
    {
        Message data{};
        Until([&] {
            while (xcb_generic_event_t* event = source.Poll()) {
                const auto& message = *reinterpret_cast<xcb_client_message_event_t*>(event);
                const bool fits =
                    (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE && message.type == source.Atom(type);
                if (fits)
                    std::copy_n(message.data.data32, 5, data.begin());
                std::free(event);
                if (fits)
                    return true;
            }
            return false;
        });
        return data;
    }
    void EnterAndMove(const char* type, int x, int y)
    {
        Send("XdndEnter", {source.Window(), 5u << 24, host->Atom(type), 0, 0});
        Send("XdndPosition",
             {source.Window(), 0, static_cast<std::uint32_t>(x << 16 | y), 0, host->Atom("XdndActionCopy")});
    }
    void ServeList(const std::string& list)
    {
        auto* request =
            reinterpret_cast<xcb_selection_request_event_t*>(source.WaitFor(XCB_SELECTION_REQUEST));
        if (!request)
            return;
        xcb_change_property(source, XCB_PROP_MODE_REPLACE, request->requestor, request->property,
                            request->target, 8, static_cast<std::uint32_t>(list.size()), list.data());
        xcb_selection_notify_event_t answer{};
        answer.response_type = XCB_SELECTION_NOTIFY;
        answer.requestor = request->requestor;
        answer.selection = request->selection;
        answer.target = request->target;
        answer.property = request->property;
        xcb_send_event(source, 0, request->requestor, 0, reinterpret_cast<const char*>(&answer));
        source.Sync();
        std::free(request);
    }

    TestHost source;
    std::vector<std::pair<gui::Point, std::string>> dropped;
};

TEST_F(FileDropTest, TheFirstFileArrivesAtItsPlace)
{
    OpenForDrops();
    EnterAndMove("text/uri-list", 140, 70);
    const Message status = Answer("XdndStatus");
    EXPECT_EQ(status[0], host->Window());
    EXPECT_EQ(status[1] & 1, 1u);
    EXPECT_EQ(status[4], host->Atom("XdndActionCopy"));
    xcb_set_selection_owner(source, source.Window(), source.Atom("XdndSelection"), XCB_CURRENT_TIME);
    Send("XdndDrop", {source.Window(), 0, 0, 0, 0});
    std::thread giver([&] { ServeList("file:///tmp/a%20b.mvp\r\nfile:///tmp/second\r\n"); });
    EXPECT_TRUE(Until([&] { return !dropped.empty(); }));
    giver.join();
    const Message finished = Answer("XdndFinished");
    EXPECT_EQ(finished[1], 1u);
    ASSERT_EQ(dropped.size(), 1u);
    EXPECT_EQ(dropped[0].first, (gui::Point{20.0f, 10.0f}));
    EXPECT_EQ(dropped[0].second, "/tmp/a b.mvp");
}

TEST_F(FileDropTest, OtherThingsAndOtherPlacesAreRefused)
{
    OpenForDrops();
    struct Row {
        const char* type;
        int x, y;
    };
    // The window ends at (500, 250) of the screen.
    for (const Row& row : {Row{"text/plain", 140, 70}, Row{"text/uri-list", 510, 70}}) {
        EnterAndMove(row.type, row.x, row.y);
        EXPECT_EQ(Answer("XdndStatus")[1] & 1, 0u);
        Send("XdndDrop", {source.Window(), 0, 0, 0, 0});
        EXPECT_EQ(Answer("XdndFinished")[1], 0u);
    }
    EXPECT_TRUE(dropped.empty());
    ui->AcceptsFileDrops.assign(false);
    ui->Connection().Flush();
    EXPECT_TRUE(TestHost::Wait([&] { return host->Property(host->Window(), "XdndProxy").empty(); }));
}

TEST(FileDrop, ReadsAddresses)
{
    struct Row {
        const char* list;
        const char* path;
    };
    for (const Row& row :
         {Row{"file:///a/b\r\nfile:///c\r\n", "/a/b"}, Row{"file://localhost/a", "/a"}, Row{"file:/a", "/a"},
          Row{"# note\r\nfile:///%41%c3%a4%2f\r\n", "/A\xC3\xA4/"}, Row{"file:///100%\r\n", "/100%"},
          Row{"file:///a%00b", ""}, Row{"http://x/y\r\nfile:///z", "/z"},
          Row{"file://elsewhere.invalid/a", ""}, Row{"", ""}})
        EXPECT_EQ(gui::X11FileDrop::FirstFile(row.list), row.path) << row.list;
}

}  // namespace
