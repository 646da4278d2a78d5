#include "EditorFixture.h"
#include "gui/Timer.h"

#include <filesystem>
#include <thread>

#include <xcb/res.h>

namespace {

using InterfaceTest = EditorFixture;

TEST_F(InterfaceTest, ShowsWhatItsControlsPaintAndOnlyThere)
{
    Open();
    EXPECT_EQ(host->Pixel(100, 50), 0x204060u);
    EXPECT_EQ(host->Pixel(299, 149), 0x204060u);
    EXPECT_EQ(host->Pixel(300, 149), 0xFFFFFFu);
    EXPECT_EQ(host->Pixel(299, 150), 0xFFFFFFu);
    control->BackgroundColor.assign(gui::Color::Rgb(0xA0B0C0));
    EXPECT_TRUE(Until([&] { return host->Pixel(299, 149) == 0xA0B0C0; }));
}

TEST_F(InterfaceTest, RunsByWhateverTheLoopOffers)
{
    for (const auto offers :
         {TestLoop::Offers::Descriptors, TestLoop::Offers::Timers, TestLoop::Offers::Callbacks}) {
        Open(1.0f, offers);
        int elapsed = 0;
        auto timer = ui->CreateTimer();
        timer->OnElapsed.setHandler(NotifyEvent::handler([&](void*) { ++elapsed; }));
        timer->Interval.assign(20);
        timer->Running.assign(true);
        EXPECT_TRUE(Until([&] { return elapsed >= 3; }));
        host->Move(150, 100);
        EXPECT_TRUE(Until([&] { return control->Has("enter"); }));
        timer.reset();
        control.reset();
        ui.reset();
        EXPECT_TRUE(loop->IsIdle());
    }
}

TEST_F(InterfaceTest, TakesTheSizeOfItsScaleAndFollowsItsWindow)
{
    Open(1.5f);
    const xcb_window_t window = ui->Window().Window();
    EXPECT_EQ(host->Geometry(window)[2], 300);
    EXPECT_EQ(host->Geometry(window)[3], 150);
    ui->GetRootControl().SetSize({100.0f, 60.0f});
    EXPECT_TRUE(Until([&] { return host->Geometry(window)[2] == 150 && host->Geometry(window)[3] == 90; }));
    // A host that resizes the window itself.
    const std::uint32_t values[] = {180, 120};
    xcb_configure_window(*host, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    host->Sync();
    EXPECT_TRUE(Until([&] { return ui->GetRootControl().GetSize() == gui::Point{120.0f, 80.0f}; }));
    ui->SetScale(2.0f);
    EXPECT_TRUE(Until([&] { return host->Geometry(window)[2] == 240; }));
}

TEST_F(InterfaceTest, AUsersScaleGoesBeforeTheHosts)
{
    struct Row {
        int setting;
        float override;
    };
    for (const Row& row : {Row{1, 0.0f}, Row{0, 1.0f}, Row{50, 1.0f}, Row{100, 1.0f}, Row{150, 1.5f}})
        EXPECT_FLOAT_EQ(gui::X11Interface::OverrideScale(row.setting), row.override) << row.setting;
    TestLoop ownLoop;
    gui::X11Interface::Options options;
    options.parent = host->Window();
    options.size = {100.0f, 100.0f};
    options.scale = 2.0f;
    options.scaleSetting = 150;
    const auto opened = gui::X11Interface::Open(ownLoop, options);
    ASSERT_TRUE(opened);
    EXPECT_FLOAT_EQ(opened->Backing().Scale(), 1.5f);
    opened->SetScale(3.0f);
    EXPECT_FLOAT_EQ(opened->Backing().Scale(), 1.5f);
}

TEST_F(InterfaceTest, MovesToAnotherParentAndHides)
{
    Open();
    TestHost other;
    const std::uint32_t place[] = {520, 400};
    xcb_configure_window(other, other.Window(), XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
    other.Sync();
    ui->SetParentWindow(other.Window());
    EXPECT_TRUE(Until([&] { return other.Pixel(530, 410) == 0x204060; }));
    ui->Show(false);
    EXPECT_TRUE(Until([&] { return other.Pixel(530, 410) == 0xFFFFFF; }));
}

TEST_F(InterfaceTest, FillsTheScreenAndComesBack)
{
    Open();
    ui->GetRootControl().FullScreen.assign(true);
    EXPECT_TRUE(Until([&] {
        const auto tops = host->TopWindows();
        return tops.size() == 1 && host->Geometry(tops[0]) == std::array{0, 0, 800, 601};
    }));
    EXPECT_EQ(ui->GetRootControl().GetSize(), (gui::Point{800.0f, 601.0f}));
    int ticks = 0;
    ui->OnTick.setHandler(NotifyEvent::handler([&](void*) { ++ticks; }));
    EXPECT_TRUE(Until([&] { return ticks > 3 && host->FocusOwner() == ui->Window().Window(); }));
    host->Type(0xFF1B);  // Escape
    EXPECT_TRUE(Until([&] { return !ui->GetRootControl().FullScreen.value(); }));
    EXPECT_TRUE(Until([&] { return host->TopWindows().empty() && host->Pixel(110, 60) == 0x204060; }));
    EXPECT_EQ(ui->GetRootControl().GetSize(), (gui::Point{200.0f, 100.0f}));
}

TEST_F(InterfaceTest, EndsWithTheHostsWindowAndStaysQuiet)
{
    Open();
    int losses = 0;
    ui->OnWindowLost.setHandler(NotifyEvent::handler([&](void*) { ++losses; }));
    host->DestroyWindow();
    EXPECT_TRUE(Until([&] { return losses == 1; }));
    EXPECT_EQ(ui->GetPlatformWindow(), 0u);
    const int calls = loop->Calls();
    control->BackgroundColor.assign(gui::Color::White());
    ui->GetRootControl().SetSize({10.0f, 10.0f});
    EXPECT_EQ(ui->Platform().GetClipboardText(), "");
    EXPECT_EQ(ui->Platform().GetScreenSize(), (gui::Point{1024.0f, 768.0f}));
    loop->RunFor(50);
    EXPECT_EQ(loop->Calls(), calls);
    EXPECT_EQ(losses, 1);
}

TEST_F(InterfaceTest, TheHandlerOfALossMayDeleteTheEditor)
{
    Open();
    ui->OnWindowLost.setHandler(NotifyEvent::handler([&](void*) {
        control.reset();
        ui.reset();
    }));
    host->DestroyWindow();
    EXPECT_TRUE(Until([&] { return !ui; }));
    EXPECT_TRUE(loop->IsIdle());
}

TEST_F(InterfaceTest, TellsTheScreensRoomInItsUnits)
{
    Open(2.0f);
    // floor(2 x 165) pixels less in height.
    EXPECT_EQ(ui->Platform().GetScreenSize(), (gui::Point{400.0f, (600.0f - 330.0f) / 2.0f}));
}

int openDescriptors()
{
    int count = 0;
    for ([[maybe_unused]] const auto& each : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

int threads()
{
    int count = 0;
    for ([[maybe_unused]] const auto& each : std::filesystem::directory_iterator("/proc/self/task"))
        ++count;
    return count;
}

int displayClients(TestHost& host)
{
    xcb_res_query_clients_reply_t* reply =
        xcb_res_query_clients_reply(host, xcb_res_query_clients(host), nullptr);
    const int count = static_cast<int>(reply->num_clients);
    std::free(reply);
    return count;
}

TEST_F(InterfaceTest, ManyEditorsLeaveNothingBehind)
{
    const int clients = displayClients(*host);
    const auto openOnce = [&](int i) {
        Open(1.0f, static_cast<TestLoop::Offers>(i % 3));
        control.reset();
        ui.reset();
        loop.reset();
    };
    for (int i = 0; i < 3; ++i)
        openOnce(i);
    const int descriptors = openDescriptors(), running = threads();
    for (int i = 0; i < 100; ++i)
        openOnce(i);
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_EQ(threads(), running);
    EXPECT_TRUE(TestHost::Wait([&] { return displayClients(*host) == clients; }));
    EXPECT_EQ(host->FirstChild(host->Window()), 0u);
}

TEST(DisplayLoss, EndsTheEditorAndNotTheProcess)
{
    for (const bool paints : {false, true}) {
        VirtualDisplay display;
        ASSERT_TRUE(display.IsRunning());
        TestHost host;
        TestLoop loop;
        gui::X11Interface::Options options;
        options.parent = host.Window();
        options.size = {100.0f, 100.0f};
        const auto ui = gui::X11Interface::Open(loop, options);
        ASSERT_TRUE(ui);
        int losses = 0;
        ui->OnWindowLost.setHandler(NotifyEvent::handler([&](void*) { ++losses; }));
        loop.RunFor(50);
        display.Kill();
        if (paints) {
            // What is written now finds nobody at the other end.
            ui->GetRootControl().SetSize({300.0f, 300.0f});
            ui->Platform().SetClipboardText("text");
        }
        EXPECT_TRUE(loop.RunUntil([&] { return losses == 1; }));
    }
}

TEST(DisplayLoss, WithoutADisplayThereIsNoEditor)
{
    unsetenv("DISPLAY");
    TestLoop loop;
    EXPECT_FALSE(gui::X11Interface::Open(loop, {}));
}

}  // namespace
