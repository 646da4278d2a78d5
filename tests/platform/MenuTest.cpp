#include "gui/Menu.h"
#include "EditorFixture.h"
#include "gui/PopupMenu.h"
#include "gui/Timer.h"
#include "platform/MenuPlacement.h"

#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <thread>

namespace {

using namespace gui;

class MenuTest : public EditorFixture {
protected:
    void SetUp() override
    {
        EditorFixture::SetUp();
        Open();
        menu.AddItem("Alpha");
        menu.AddSeparator();
        menu.AddItem("Beta").Enabled.assign(false);
        menu.AddItem("Gamma");
        auto inner = std::make_unique<Menu>("More");
        more = inner.get();
        more->AddItem("Inner one");
        more->AddItem("Inner two");
        menu.AddItem(-1, std::move(inner));
        menu.AddItem("Garden");
    }

    /// Shows the menu under the editor's top left corner while another thread does `acts`.
    MenuItem* Show(const std::function<void()>& acts)
    {
        const auto popup = ui->Platform().CreatePopupMenu();
        std::thread hand([&] {
            EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().size() == 1; }));
            acts();
        });
        RootControl::Entry entry(ui->GetRootControl());
        MenuItem* chosen = popup->Show(menu, {10.0f, 0.0f, 60.0f, 20.0f});
        hand.join();
        return chosen;
    }
    void Type(std::initializer_list<std::uint32_t> symbols)
    {
        for (const std::uint32_t symbol : symbols)
            host->Type(symbol);
    }

    Menu menu;
    Menu* more = nullptr;
};

TEST_F(MenuTest, TheKeyboardChooses)
{
    struct Row {
        std::vector<std::uint32_t> keys;
        MenuItem* chosen;
    };
    const auto item = [&](int i) { return menu.GetItem(i); };
    const Row rows[] = {
        {{XKB_KEY_Down, XKB_KEY_Return}, item(0)},
        {{XKB_KEY_Down, XKB_KEY_Down, XKB_KEY_Return}, item(3)},  // over the line and what is disabled
        {{XKB_KEY_Up, XKB_KEY_Return}, item(5)},
        {{XKB_KEY_End, XKB_KEY_Up, XKB_KEY_Right, XKB_KEY_Down, XKB_KEY_Return}, more->GetItem(1)},
        {{XKB_KEY_g, XKB_KEY_a, XKB_KEY_r, XKB_KEY_Return}, item(5)},
        {{XKB_KEY_m, XKB_KEY_Right, XKB_KEY_Left, XKB_KEY_Home, XKB_KEY_Return}, item(0)},
        {{XKB_KEY_Escape}, nullptr},
    };
    for (const Row& row : rows) {
        MenuItem* heard = nullptr;
        for (MenuItem* each : {item(0), item(3), item(5), more->GetItem(1)})
            each->OnClick.setHandler(NotifyEvent::handler([&heard, each](void*) { heard = each; }));
        EXPECT_EQ(Show([&] {
                      for (const std::uint32_t symbol : row.keys)
                          host->Type(symbol);
                  }),
                  row.chosen);
        EXPECT_EQ(heard, row.chosen);
        EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().empty(); }));
    }
}

TEST_F(MenuTest, TheMouseChoosesOpensSubmenusAndClosesOutside)
{
    const auto rowAt = [&](xcb_window_t window, int part, int parts) {
        const auto place = host->Geometry(window);
        host->Move(place[0] + 30, place[1] + place[3] * (2 * part + 1) / (2 * parts));
    };
    EXPECT_EQ(Show([&] {
                  const xcb_window_t window = host->TopWindows()[0];
                  EXPECT_EQ(host->Geometry(window)[0], 110);
                  EXPECT_EQ(host->Geometry(window)[1], 70);
                  rowAt(window, 0, 12);
                  host->Button(1, true);
                  host->Button(1, false);
              }),
              menu.GetItem(0));
    EXPECT_EQ(Show([&] {
                  const auto place = host->Geometry(host->TopWindows()[0]);
                  // "More" is the last row but one; the mouse resting there opens it.
                  host->Move(place[0] + 30, place[1] + place[3] - place[3] / 4);
                  EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().size() == 2; }));
                  rowAt(host->TopWindows()[1], 0, 2);
                  host->Button(1, true);
                  host->Button(1, false);
              }),
              more->GetItem(0));
    EXPECT_EQ(Show([&] {
                  host->Move(700, 500);
                  host->Button(1, true);
                  host->Button(1, false);
              }),
              nullptr);
}

TEST_F(MenuTest, WhatIsTooLongScrollsAtItsEdge)
{
    for (int i = 0; i < 60; ++i)
        menu.AddItem("Entry");
    const auto rests = [&](xcb_window_t window) {
        const auto before = host->Picture(window);
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        return host->Picture(window) == before;
    };
    const MenuItem* const chosen = Show([&] {
        const xcb_window_t window = host->TopWindows()[0];
        const auto place = host->Geometry(window);
        EXPECT_EQ(place[3], 600) << "as high as the screen";
        const auto before = host->Picture(window);
        host->Move(place[0] + 30, 597);
        EXPECT_TRUE(TestHost::Wait([&] { return host->Picture(window) != before; }));
        EXPECT_TRUE(TestHost::Wait([&] { return rests(window); }));
        host->Move(place[0] + 30, 585);
        host->Button(1, true);
        host->Button(1, false);
    });
    EXPECT_EQ(chosen, menu.GetItem(menu.ItemCount() - 1));
}

TEST_F(MenuTest, TheEditorLivesOnAndItsLockIsFree)
{
    int elapsed = 0;
    const auto timer = ui->CreateTimer();
    timer->Interval.assign(10);
    timer->OnElapsed.setHandler(NotifyEvent::handler([&](void*) {
        if (++elapsed == 3)
            control->BackgroundColor.assign(Color::Rgb(0x506070));
    }));
    timer->Running.assign(true);
    bool wasFree = false;
    Show([&] {
        {
            const ScopedLock lock(ui->GetRootControl());
            wasFree = true;
        }
        EXPECT_TRUE(TestHost::Wait([&] { return host->Pixel(290, 140) == 0x506070; }));
        host->Type(XKB_KEY_Escape);
    });
    EXPECT_TRUE(wasFree);
    EXPECT_GE(elapsed, 3);
}

TEST_F(MenuTest, ALostWindowEndsIt)
{
    EXPECT_EQ(Show([&] { host->DestroyWindow(); }), nullptr);
    EXPECT_TRUE(ui->IsWindowLost());
}

TEST(MenuPlacement, OpensWhereThereIsRoom)
{
    using Side = MenuPlacement::Side;
    constexpr DeviceRect monitor{0, 0, 800, 600};
    struct Row {
        BasicPoint<int> size;
        DeviceRect anchor;
        Side side;
        DeviceRect place;
    };
    for (const Row& row : {
             Row{{100, 200}, {50, 40, 90, 60}, Side::Below, {50, 60, 150, 260}},
             Row{{100, 200}, {50, 500, 90, 520}, Side::Below, {50, 300, 150, 500}},  // above
             Row{{100, 200}, {750, 40, 790, 60}, Side::Below, {700, 60, 800, 260}},  // moved in
             Row{{100, 900}, {50, 40, 90, 60}, Side::Below, {50, 0, 150, 600}},      // cut
             Row{{100, 200}, {50, 40, 90, 60}, Side::Beside, {90, 40, 190, 240}},
             Row{{100, 200}, {700, 500, 780, 520}, Side::Beside, {600, 400, 700, 600}},  // to the left, up
         })
        EXPECT_EQ(MenuPlacement::Place(row.size, row.anchor, row.side, monitor), row.place);
}

TEST(MenuPlacement, KnowsTheWayToASubmenu)
{
    constexpr DeviceRect right{200, 100, 300, 300}, left{0, 100, 80, 300};
    EXPECT_TRUE(MenuPlacement::HeadsFor(right, {100, 120}, {110, 135}));
    EXPECT_FALSE(MenuPlacement::HeadsFor(right, {100, 120}, {101, 135})) << "too steep";
    EXPECT_FALSE(MenuPlacement::HeadsFor(right, {100, 120}, {95, 125})) << "away";
    EXPECT_TRUE(MenuPlacement::HeadsFor(left, {150, 120}, {140, 130}));
}

}  // namespace
