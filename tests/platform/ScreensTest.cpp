#include "EditorFixture.h"
#include "WindowManagerStub.h"
#include "gui/Menu.h"
#include "gui/PlatformDelegate.h"
#include "gui/PopupMenu.h"
#include "platform/X11Screens.h"

#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>
#include <xkbcommon/xkbcommon.h>

#include <cstring>
#include <thread>

namespace {

using namespace gui;

TEST(Screens, TheUsersLettersSayTheScaleElseOnlyTinyPixels)
{
    struct Row {
        float fontScale;
        int width, height, millimetres;
        float scale;
    };
    for (const Row& row : {Row{1.5f, 1920, 1080, 344, 1.5f}, Row{0.0f, 3840, 2160, 344, 2.0f},  // 284 dpi
                           Row{0.0f, 3840, 2160, 700, 1.0f},                                    // 139 dpi
                           Row{0.0f, 1920, 1080, 200, 1.0f}, Row{0.0f, 3840, 2160, 16, 1.0f}}) {
        X11DesktopSettings settings;
        if (row.fontScale > 0.0f)
            settings.fontScale = row.fontScale;
        EXPECT_FLOAT_EQ(X11Screens::ScaleOf(settings, row.width, row.height, row.millimetres), row.scale);
    }
}

/// Two monitors side by side, 2000 pixels wide each; those on the right are tiny at first.
class MonitorsTest : public EditorFixture {
protected:
    static void SetUpTestSuite() { display = std::make_unique<VirtualDisplay>("4000x1600x24"); }

    void SetUp() override
    {
        EditorFixture::SetUp();
        SetMonitor("left", 0, 529, true);
        SetMonitor("right", 2000, 200, false);
    }

    /// @param millimetres  its width: 529 make 96 pixels an inch
    void SetMonitor(const char* name, int x, int millimetres, bool takesOutput)
    {
        auto* resources = xcb_randr_get_screen_resources_current_reply(
            *host, xcb_randr_get_screen_resources_current(*host, host->Root()), nullptr);
        const xcb_randr_output_t output = *xcb_randr_get_screen_resources_current_outputs(resources);
        std::free(resources);
        struct {
            xcb_randr_set_monitor_request_t head;
            xcb_randr_monitor_info_t info;
            xcb_randr_output_t output;
        } wish{};
        wish.head.window = host->Root();
        wish.info.name = host->Atom(name);
        wish.info.nOutput = takesOutput;
        wish.info.x = static_cast<std::int16_t>(x);
        wish.info.width = 2000;
        wish.info.height = 1600;
        wish.info.width_in_millimeters = static_cast<std::uint32_t>(millimetres);
        wish.info.height_in_millimeters = 300;
        wish.output = output;
        // The library's own call counts the outputs wrongly.
        iovec parts[3] = {{}, {}, {&wish, sizeof wish - (takesOutput ? 0 : sizeof wish.output)}};
        const xcb_protocol_request_t request{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
        // An old one has to go first, but not for all to see.
        xcb_grab_server(*host);
        xcb_randr_delete_monitor(*host, host->Root(), wish.info.name);
        xcb_send_request(*host, 0, parts + 2, &request);
        xcb_ungrab_server(*host);
        host->Sync();
    }
    void SetResources(const std::string& text)
    {
        xcb_change_property(*host, XCB_PROP_MODE_REPLACE, host->Root(), XCB_ATOM_RESOURCE_MANAGER,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
        host->Sync();
    }
    bool HasScale(float scale)
    {
        return Until([&] {
            const auto place = host->Geometry(ui->Window().Window());
            return place[2] == ToDevice(200.0f, scale) && ui->Backing().Scale() == scale;
        });
    }
    /// Runs `show` and gives where the window opens that it shows, which Escape then closes.
    std::array<int, 4> PlaceOf(const std::function<void()>& show)
    {
        std::array<int, 4> place{};
        std::thread hand([&] {
            EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().size() == 1; }));
            const xcb_window_t opened = host->TopWindows().at(0);
            place = host->Geometry(opened);
            // A menu has the keyboard at once, a dialog as soon as it shows.
            TestHost::Wait([&] {
                host->Type(XKB_KEY_Escape);
                return host->TopWindows().empty();
            });
        });
        {
            RootControl::Entry entry(ui->GetRootControl());
            show();
        }
        hand.join();
        return place;
    }
};

TEST_F(MonitorsTest, TheScaleFollowsTheMonitorUntilSomeoneSaysOne)
{
    Open(0.0f);
    int changes = 0;
    ui->GetRootControl().OnMonitorChanged.setHandler(NotifyEvent::handler([&](void*) { ++changes; }));
    EXPECT_FLOAT_EQ(ui->Backing().Scale(), 1.0f) << "the smallest of both";
    host->MoveWindow(2500, 50);
    EXPECT_TRUE(HasScale(2.0f));
    EXPECT_EQ(changes, 1);
    SetMonitor("right", 2000, 529, false);
    EXPECT_TRUE(HasScale(1.0f));
    EXPECT_EQ(changes, 2);
    SetResources("Xft.dpi:\t144\n");
    EXPECT_TRUE(HasScale(1.5f));
    ui->SetScale(1.25f);
    SetResources("");
    EXPECT_TRUE(Until([&] { return changes == 4; }));
    EXPECT_TRUE(HasScale(1.25f));
}

TEST_F(MonitorsTest, MenusAndDialogsStayOnTheEditorsMonitor)
{
    Open();
    Menu menu;
    menu.AddItem("An entry that is long enough to reach over");
    const auto showMenu = [&] {
        ui->Platform().CreatePopupMenu()->Show(menu, {150.0f, 0.0f, 190.0f, 20.0f});
    };
    const auto showMessage = [&] { ui->Platform().ShowMessageBox("Text", 1, {}); };
    host->MoveWindow(1790, 50);  // its right edge 10 pixels before the other monitor
    const auto menuLeft = PlaceOf(showMenu);
    EXPECT_EQ(menuLeft[0] + menuLeft[2], 2000);
    EXPECT_EQ(menuLeft[1], 70);
    const auto boxLeft = PlaceOf(showMessage);
    EXPECT_EQ(boxLeft[0] + boxLeft[2], 2000);
    host->MoveWindow(2500, 600);
    const auto boxRight = PlaceOf(showMessage);
    EXPECT_EQ(boxRight[0] + boxRight[2] / 2, 2600);
    EXPECT_NEAR(boxRight[1] + boxRight[3] / 2, 650, 1);
}

TEST_F(MonitorsTest, FullScreenFillsTheEditorsMonitor)
{
    const auto fills = [&](std::array<int, 4> place) {
        return Until([&] {
            const auto tops = host->TopWindows();
            return tops.size() == 1 && host->Geometry(tops[0]) == place &&
                   ui->GetRootControl().GetSize() ==
                       Point{static_cast<float>(place[2]), static_cast<float>(place[3])};
        });
    };
    Open();
    host->MoveWindow(2500, 50);
    RootControl& root = ui->GetRootControl();
    root.FullScreen.assign(true);
    EXPECT_TRUE(fills({2000, 0, 2000, 1601})) << "alone: one pixel taller than the monitor";
    root.FullScreen.assign(false);
    EXPECT_TRUE(Until([&] { return host->TopWindows().empty(); }));

    WindowManagerStub manager;
    root.FullScreen.assign(true);
    EXPECT_TRUE(fills({2000, 0, 2000, 1600})) << "the manager's rectangle";
    const xcb_window_t window = ui->Window().Window();
    EXPECT_EQ(manager.LastManaged(), window);
    const xcb_window_t hosts = host->Window();
    const std::string owner = host->Property(window, "WM_TRANSIENT_FOR");
    ASSERT_EQ(owner.size(), 4u);
    EXPECT_EQ(std::memcmp(owner.data(), &hosts, 4), 0);
    int ticks = 0;
    ui->OnTick.setHandler(NotifyEvent::handler([&](void*) { ++ticks; }));
    EXPECT_TRUE(Until([&] { return ticks > 3; }));
    manager.Close(window);
    EXPECT_TRUE(Until([&] { return !root.FullScreen.value() && host->TopWindows().empty(); }));
    EXPECT_EQ(root.GetSize(), (Point{200.0f, 100.0f}));
    EXPECT_EQ(host->FirstChild(host->Window()), ui->Window().Window());
}

TEST_F(MonitorsTest, FullScreenEndsWithTheHostsWindow)
{
    Open();
    ui->GetRootControl().FullScreen.assign(true);
    EXPECT_TRUE(Until([&] { return host->TopWindows().size() == 1; }));
    host->DestroyWindow();
    EXPECT_TRUE(Until([&] { return ui->IsWindowLost(); }));
    EXPECT_TRUE(Until([&] { return host->TopWindows().empty(); }));
}

}  // namespace
