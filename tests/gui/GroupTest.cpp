#include "gui/ValueControlGroup.h"
#include "support/ControlsFixture.h"

#include <cmath>

namespace gui {

class GroupTest : public ControlsFixture {
protected:
    GroupTest()
    {
        for (int i = 0; i < 3; ++i) {
            controls.push_back(std::make_unique<ValueControl>(*ui, &root(), &animator));
            controls.back()->MaxValue.assign(1000);
            listenTo(*controls.back(), std::string(1, static_cast<char>('a' + i)));
        }
    }
    ValueControl& at(std::size_t i) { return *controls[i]; }
    void set(int a, int b)
    {
        at(0).Value.assign(a);
        at(1).Value.assign(b);
    }
    void change(int delta) { at(0).ChangeValue(GesturePhase::Change, delta); }
    void begin(int flags = InputFlags::alt)
    {
        at(0).UpdateGroupMode(flags);
        at(0).ChangeValue(GesturePhase::Begin, 0);
    }
    void end() { at(0).ChangeValue(GesturePhase::End, 0); }

    std::vector<std::unique_ptr<ValueControl>> controls;
};

TEST_F(GroupTest, MembersFollowByTheRuleOfTheGroup)
{
    using Mode = ValueControl::Group::Mode;
    struct Row {
        const char* what;
        Mode mode;
        int leader, member, delta;
        bool squared;
        int expected;
    };
    at(0).LinkWith(at(1));
    for (const Row& row : {
             Row{"same", Mode::Same, 100, 500, 50, false, 550},
             Row{"same, to the end", Mode::Same, 100, 990, 50, false, 1000},
             Row{"opposite", Mode::Opposite, 100, 500, 50, false, 450},
             Row{"difference", Mode::Difference, 100, 500, 50, false, 550},
             Row{"difference of squares: 0.36 - 0.25", Mode::Difference, 500, 500, 100, true, 610},
             Row{"ratio 3/2", Mode::Ratio, 200, 400, 100, false, 600},
             Row{"ratio of squares, back by the root: 0.4 x 3/2", Mode::Ratio, 200, 400, 100, true, 600},
             Row{"a ratio to nothing", Mode::Ratio, 0, 400, 100, false, 400},
         }) {
        ValueControl::Group& group = *at(0).ValueGroup();
        group.mode = row.mode;
        group.forward = row.squared ? [](float x) { return x * x; } : ValueControl::WarpFunction();
        group.inverse = row.squared ? [](float x) { return std::sqrt(x); } : ValueControl::WarpFunction();
        set(row.leader, row.member);
        begin();
        change(row.delta);
        end();
        EXPECT_EQ(at(0).Value.value(), row.leader + row.delta) << row.what;
        EXPECT_EQ(at(1).Value.value(), row.expected) << row.what;
    }
}

TEST_F(GroupTest, ManySmallRatiosAddNoRounding)
{
    at(0).LinkWith(at(1));
    at(0).ValueGroup()->mode = ValueControl::Group::Mode::Ratio;
    set(300, 100);
    begin();
    for (int i = 0; i < 300; ++i)
        change(1);
    EXPECT_EQ(at(1).Value.value(), 200);
    for (int i = 0; i < 300; ++i)
        change(-1);
    end();
    EXPECT_EQ(at(1).Value.value(), 100);
}

TEST_F(GroupTest, ARatioStopsAtTheLeadersEnd)
{
    at(0).LinkWith(at(1));
    at(0).ValueGroup()->mode = ValueControl::Group::Mode::Ratio;
    set(800, 400);
    begin();
    change(600);  // 1.75 times would be 700
    end();
    EXPECT_EQ(at(0).Value.value(), 1000);
    EXPECT_EQ(at(1).Value.value(), 500);
}

TEST_F(GroupTest, AllStopWhereNobodyCanGoAndComeBackTogether)
{
    at(0).LinkWith(at(1));
    set(950, 900);
    begin();
    change(400);
    EXPECT_EQ(at(1).Value.value(), 1000);
    change(-300);
    EXPECT_EQ(at(0).Value.value(), 1000);
    EXPECT_EQ(at(1).Value.value(), 1000);
    change(-100);
    end();
    EXPECT_EQ(at(0).Value.value(), 950);
    EXPECT_EQ(at(1).Value.value(), 900);
}

TEST_F(GroupTest, TheGroupJoinsAndLeavesDuringAGesture)
{
    at(0).LinkWith(at(1));
    set(100, 200);
    begin(0);
    change(10);
    at(0).UpdateGroupMode(InputFlags::alt);
    change(10);
    at(0).UpdateGroupMode(0);
    change(10);
    end();
    EXPECT_EQ(takeLog(), (EventLog{"a(", "a110", "b(", "a120", "b210", "b)", "a130", "a)"}));
    begin();
    end();
    EXPECT_EQ(takeLog(), (EventLog{"b(", "a(", "b)", "a)"}));
}

TEST_F(GroupTest, MoreThanTwoChangeInABatch)
{
    at(0).LinkWith(at(1));
    at(2).LinkWith(at(0));
    begin();
    takeLog();
    change(5);
    EXPECT_EQ(takeLog(), (EventLog{"batch", "a5", "b5", "c5", "batched"}));
    end();
}

TEST_F(GroupTest, ItLivesAsLongAsItHasTwoMembers)
{
    at(0).LinkWith(at(1));
    EXPECT_EQ(at(0).ValueGroup(), at(1).ValueGroup());
    at(1).LinkWith(at(2));
    EXPECT_EQ(at(0).ValueGroup()->members.size(), 3u);
    at(1).Unlink();
    EXPECT_EQ(at(1).ValueGroup(), nullptr);
    EXPECT_EQ(at(0).ValueGroup()->members.size(), 2u);
    controls.pop_back();
    EXPECT_EQ(at(0).ValueGroup(), nullptr);
}

TEST_F(GroupTest, WhoeverDiesOrLeavesMeanwhileLeavesNoGestureOpen)
{
    struct Row {
        const char* what;
        std::function<void()> path;
    };
    const Row rows[]{{"the leader dies", [this] { controls[0].reset(); }},
                     {"a member dies", [this] { controls[1].reset(), change(1), end(); }},
                     {"a member leaves", [this] { at(1).Unlink(), change(1), end(); }},
                     {"the leader leaves", [this] { at(0).Unlink(), change(1), end(); }},
                     {"a member dies in a change", [this] {
                          on(at(0).OnValueChanged, [this] { controls[1].reset(); });
                          change(1), end();
                      }}};
    for (const Row& row : rows) {
        controls.clear();
        for (int i = 0; i < 3; ++i) {
            controls.push_back(std::make_unique<ValueControl>(*ui, &root(), &animator));
            listenTo(*controls.back(), "x");
        }
        at(0).LinkWith(at(1));
        at(0).LinkWith(at(2));
        begin();
        EXPECT_EQ(listener.OpenGestures(), 3) << row.what;
        row.path();
        EXPECT_EQ(listener.OpenGestures(), 0) << row.what;
    }
}

}  // namespace gui
