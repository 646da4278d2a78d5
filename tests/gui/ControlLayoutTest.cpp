#include "support/GuiFixture.h"

namespace gui {

using ControlLayout = GuiFixture;

std::ostream& operator<<(std::ostream& stream, const Rect& rect)
{
    return stream << rect.left << "," << rect.top << "," << rect.right << "," << rect.bottom;
}

TEST_F(ControlLayout, AnchorsFollowTheEdgesOfTheParent)
{
    // The parent grows from 100 x 50 by 7 and 11; the child was at 10,10,30,30.
    struct Row {
        int anchors;
        Rect expected;
    };
    for (const Row& row :
         {Row{3, {10, 10, 30, 30}}, Row{1, {10, 15.5f, 30, 35.5f}}, Row{2, {13.5f, 10, 33.5f, 30}},
          Row{0, {13.5f, 15.5f, 33.5f, 35.5f}}, Row{4, {17, 15.5f, 37, 35.5f}},
          Row{5, {10, 15.5f, 37, 35.5f}}, Row{8, {13.5f, 21, 33.5f, 41}}, Row{15, {10, 10, 37, 41}}}) {
        ProbeControl panel(*ui, &root(), {0, 0, 100, 50}, log);
        ProbeControl child(*ui, &panel, {10, 10, 30, 30}, log);
        child.Anchors.assign(row.anchors);
        panel.SetSize({107, 61});
        EXPECT_TRUE(IsSameRect(child.GetBounds(), row.expected)) << row.anchors << " " << child.GetBounds();
    }
}

TEST_F(ControlLayout, PlacesAreSetThroughTheirProperties)
{
    ProbeControl probe(*ui, &root(), {10, 20, 30, 50}, log);
    probe.Center.assign({50, 50});
    EXPECT_EQ(probe.GetBounds(), (Rect{40, 35, 60, 65}));
    probe.Left.assign(1), probe.Top.assign(2), probe.Width.assign(3), probe.Height.assign(4);
    EXPECT_EQ(probe.GetBounds(), (Rect{1, 2, 4, 6}));
    const int resizes = probe.resizes;
    probe.SetBounds(1.0009f, 2, 3, 4);  // within the tolerance: nothing
    EXPECT_EQ(probe.GetBounds(), (Rect{1, 2, 4, 6}));
    probe.SetWidth(3.009f);  // neither 0.01 nor a whole unit: a change, but no other size
    EXPECT_EQ(probe.resizes, resizes);
    probe.SetWidth(2.999f);  // another whole unit
    probe.SetWidth(2.98f);
    EXPECT_EQ(probe.resizes, resizes + 2);
}

TEST_F(ControlLayout, OnlyWhatChangedIsRepainted)
{
    ProbeControl panel(*ui, &root(), {10, 10, 110, 90}, log);
    ProbeControl child(*ui, &panel, {20, 20, 40, 40}, log);
    struct Row {
        const char* what;
        std::function<void()> change;
        Rect dirty;
    };
    const std::vector<Row> rows = {
        {"part",
         [&] {
             child.Invalidate({5, 5, 10, 12});
         },
         {35, 35, 40, 42}},
        {"cut to the control",
         [&] {
             child.Invalidate({-5, 10, 100, 15});
         },
         {30, 40, 50, 45}},
        {"outside",
         [&] {
             child.Invalidate({30, 30, 50, 50});
         },
         {}},
        {"two parts",
         [&] {
             child.Invalidate({0, 0, 1, 1}), child.Invalidate({9, 9, 10, 10});
         },
         {30, 30, 40, 40}},
        {"colour", [&] { child.BackgroundColor.assign(Color::Black()); }, {30, 30, 50, 50}},
        {"a move, both places", [&] { child.SetLeft(30); }, {30, 30, 60, 50}},
        {"growth", [&] { child.SetHeight(30); }, {40, 30, 60, 60}},
        {"cut to the parent", [&] { child.SetTop(70); }, {40, 30, 60, 90}},
        {"back", [&] { child.SetBounds(20, 20, 20, 20); }, {30, 30, 60, 90}},
        {"fading", [&] { child.Opacity.assign(100); }, {30, 30, 50, 50}},
        {"gone by opacity", [&] { child.Opacity.assign(0); }, {30, 30, 50, 50}},
        {"unseen", [&] { child.Invalidate(); }, {}},
        {"hidden while transparent", [&] { child.Visible.assign(false); }, {}},
        {"opaque while hidden", [&] { child.Opacity.assign(255); }, {}},
        {"shown", [&] { child.Visible.assign(true); }, {30, 30, 50, 50}},
        {"taken out", [&] { child.Parent.assign(nullptr); }, {30, 30, 50, 50}},
        {"moved elsewhere", [&] { child.SetLeft(50); }, {}},
        {"put in", [&] { child.Parent.assign(&panel); }, {60, 30, 80, 50}},
        {"in a hidden parent", [&] { panel.Visible.assign(false), ui->Paint(), child.Invalidate(); }, {}}};
    for (const Row& row : rows) {
        ui->Paint();
        ASSERT_TRUE(root().DirtyRect().IsEmpty());
        row.change();
        EXPECT_EQ(root().DirtyRect(), row.dirty) << row.what;
    }
}

TEST_F(ControlLayout, ABatchReachesTheRootAtItsEnd)
{
    ProbeControl probe(*ui, &root(), {10, 10, 30, 30}, log);
    ui->Paint();
    {
        const ScopedUpdate batch(probe);
        probe.Invalidate({0, 0, 5, 5});
        EXPECT_TRUE(root().DirtyRect().IsEmpty());
        probe.SetLeft(20);  // what waits stays where it was on the screen
        EXPECT_TRUE(root().DirtyRect().IsEmpty());
    }
    EXPECT_EQ(root().DirtyRect(), (Rect{10, 10, 40, 30}));
}

TEST_F(ControlLayout, OpaqueRectangles)
{
    // In a panel of 100 x 80.
    struct Row {
        const char* what;
        std::vector<Rect> children;
        Rect expected;
    };
    for (const Row& row :
         {Row{"side by side", {{0, 0, 30, 40}, {30, 0, 60, 40}}, {0, 0, 60, 40}},
          Row{"below each other", {{0, 40, 30, 80}, {0, 0, 30, 40}}, {0, 0, 30, 80}},
          Row{"apart: the upper", {{0, 50, 30, 80}, {0, 0, 30, 40}}, {0, 0, 30, 40}},
          Row{"overlapping, wide", {{0, 0, 50, 40}, {40, 10, 100, 40}}, {0, 10, 100, 40}},
          Row{"a small one on a large one", {{0, 0, 100, 80}, {10, 10, 20, 20}}, {0, 0, 100, 80}},
          Row{"beyond the panel", {{-50, 0, 30, 200}}, {0, 0, 30, 80}}}) {
        ProbeControl panel(*ui, &root(), {10, 10, 110, 90}, log);
        std::vector<std::unique_ptr<ProbeControl>> children;
        for (const Rect& rect : row.children) {
            children.push_back(std::make_unique<ProbeControl>(*ui, &panel, rect, log));
            children.back()->Opaque.assign(true);
        }
        EXPECT_EQ(panel.OpaqueChildrenRect(), row.expected) << row.what;
        EXPECT_EQ(panel.OpaqueRect(), row.expected) << row.what;
        EXPECT_EQ(root().OpaqueChildrenRect(), row.expected.Translated({10, 10})) << row.what;
        panel.Opacity.assign(254);  // its children still cover it, but it covers nothing
        EXPECT_EQ(panel.OpaqueChildrenRect(), row.expected) << row.what;
        EXPECT_TRUE(root().OpaqueChildrenRect().IsEmpty()) << row.what;
    }
}

TEST_F(ControlLayout, OpaqueRectanglesFollowTheirControl)
{
    ProbeControl probe(*ui, &root(), {10, 10, 30, 30}, log);
    probe.Opaque.assign(true);
    probe.SetLeft(50);
    EXPECT_EQ(root().OpaqueChildrenRect(), (Rect{50, 10, 70, 30}));
    probe.Visible.assign(false);
    EXPECT_TRUE(root().OpaqueChildrenRect().IsEmpty());
    probe.Visible.assign(true);
    EXPECT_EQ(root().OpaqueChildrenRect(), (Rect{50, 10, 70, 30}));
    probe.Parent.assign(nullptr);
    EXPECT_TRUE(root().OpaqueChildrenRect().IsEmpty());
}

TEST_F(ControlLayout, ShownMeansAllTheWayUp)
{
    ProbeControl panel(*ui, &root(), {10, 10, 60, 60}, log);
    ProbeControl child(*ui, &panel, {40, 40, 80, 80}, log);
    EXPECT_TRUE(child.IsShown());
    EXPECT_TRUE(child.IsPointShown({5, 5}));
    EXPECT_FALSE(child.IsPointShown({15, 5}));  // cut away by the panel
    EXPECT_EQ(child.ToRoot({1, 2}), (Point{51, 52}));
    EXPECT_EQ(child.FromRoot({51, 52}), (Point{1, 2}));
    panel.Opacity.assign(0);
    EXPECT_FALSE(child.IsShown());
    panel.Opacity.assign(1);
    child.SetLeft(50);
    EXPECT_FALSE(child.IsShown());
    child.SetLeft(49);
    EXPECT_TRUE(child.IsShown());
    panel.Parent.assign(nullptr);
    EXPECT_FALSE(child.IsShown());
}

}  // namespace gui
