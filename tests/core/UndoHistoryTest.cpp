#include "core/UndoHistory.h"
#include "core/CompareStates.h"

#include <gtest/gtest.h>

namespace {

/// A plug-in of one stored value and one that no preset holds.
struct FakePlugin : SnapshotOwner {
    UndoHistory& undoHistory() override { return history; }
    CompareStates& compareStates() override { return states; }
    std::vector<float> storedValues() const override { return {value}; }
    void restoreStoredValues(const std::vector<float>& values) override
    {
        value = values.at(0);
        preset.modified = true;  // as every change of a value does
    }
    PresetIdentity presetIdentity() const override { return preset; }
    void restorePresetIdentity(const PresetIdentity& identity, bool pathChanged) override
    {
        preset = identity;
        pathReports += pathChanged;
    }
    InterfaceState interfaceState() const override { return view; }
    void restoreInterfaceState(const InterfaceState& state) override { view = state; }
    const CustomValues& customValues() const override { return custom; }
    void restoreCustomValues(const CustomValues& values) override { custom = values; }

    void open()
    {
        history.initialise();
        states.initialise();
    }
    void push(float newValue)
    {
        value = newValue;
        history.pushState();
    }

    float value = 0.0f;
    float unstored = 0.0f;
    PresetIdentity preset;
    InterfaceState view;
    CustomValues custom;
    int pathReports = 0;
    UndoHistory history{*this};
    CompareStates states{*this};
};

}  // namespace

TEST(UndoHistory, GoesBackAHundredStepsAndThenStays)
{
    for (const int pushes : {1, 99, 100, 101, 250}) {
        FakePlugin plugin;
        plugin.open();
        for (int i = 1; i <= pushes; ++i)
            plugin.push(static_cast<float>(i));
        const int steps = std::min(pushes, 100);
        for (int i = 1; i <= steps; ++i) {
            ASSERT_TRUE(plugin.history.canUndo());
            plugin.history.undo();
            ASSERT_EQ(plugin.value, static_cast<float>(pushes - i));
        }
        EXPECT_FALSE(plugin.history.canUndo());
        plugin.value = -5.0f;
        plugin.history.undo();  // nothing any more
        EXPECT_EQ(plugin.value, -5.0f);
        for (int i = 1; i <= steps; ++i) {
            ASSERT_TRUE(plugin.history.canRedo());
            plugin.history.redo();
            ASSERT_EQ(plugin.value, static_cast<float>(pushes - steps + i));
        }
        EXPECT_FALSE(plugin.history.canRedo());
        plugin.history.redo();
        EXPECT_EQ(plugin.value, static_cast<float>(pushes));
    }
}

TEST(UndoHistory, ForgetsWhatCouldBeRedoneWithANewStep)
{
    FakePlugin plugin;
    plugin.open();
    for (float value : {1.0f, 2.0f, 3.0f, 4.0f})
        plugin.push(value);
    plugin.history.undo();
    plugin.history.undo();
    EXPECT_EQ(plugin.value, 2.0f);
    plugin.push(9.0f);
    EXPECT_FALSE(plugin.history.canRedo());
    plugin.history.undo();
    EXPECT_EQ(plugin.value, 2.0f);
    plugin.history.redo();
    EXPECT_EQ(plugin.value, 9.0f);
}

TEST(UndoHistory, RestoresAllThatAStateIsAndNoMore)
{
    FakePlugin plugin;
    plugin.preset = {"First", "/a/First.mvp", false};
    plugin.view = {1, 2};
    plugin.custom = {{"key", "one"}};
    plugin.open();
    const PresetIdentity first = plugin.preset;
    plugin.preset = {"Second", "/a/Second.mvp", true};
    plugin.view = {};
    plugin.custom = {{"other", "two"}};
    plugin.unstored = 0.5f;
    plugin.push(7.0f);
    plugin.unstored = 0.75f;
    plugin.history.undo();
    EXPECT_EQ(plugin.preset, first);  // not modified by its own values
    EXPECT_EQ(plugin.view, (SnapshotOwner::InterfaceState{1, 2}));
    EXPECT_EQ(plugin.custom, (CustomValues{{"key", "one"}}));
    EXPECT_EQ(plugin.unstored, 0.75f);
    EXPECT_EQ(plugin.pathReports, 1);
    plugin.history.redo();
    EXPECT_EQ(plugin.pathReports, 2);
    plugin.preset.name = "Renamed";  // the same file
    plugin.push(8.0f);
    plugin.history.undo();
    EXPECT_EQ(plugin.preset.name, "Second");
    EXPECT_EQ(plugin.pathReports, 2);
}

TEST(UndoHistory, OutlivesTheInterfaceAndNeedsNone)
{
    FakePlugin plugin;
    plugin.push(3.0f);
    plugin.history.undo();  // what was before the first step is unknown
    EXPECT_EQ(plugin.value, 3.0f);

    FakePlugin second;
    second.value = 1.0f;
    second.open();
    second.push(2.0f);
    second.open();
    second.history.undo();
    EXPECT_EQ(second.value, 1.0f);
}

TEST(CompareStates, AreEqualAtFirstAndAreCopiedOnRequest)
{
    FakePlugin plugin;
    plugin.value = 1.0f;
    plugin.open();
    EXPECT_FALSE(plugin.states.changed());
    plugin.push(2.0f);
    EXPECT_TRUE(plugin.states.changed());
    plugin.states.toggle();
    EXPECT_EQ(plugin.states.current(), 1);
    EXPECT_EQ(plugin.value, 1.0f);
    plugin.states.toggle();
    EXPECT_EQ(plugin.value, 2.0f);
    plugin.states.copyToOther();
    EXPECT_FALSE(plugin.states.changed());
    plugin.states.toggle();
    EXPECT_FALSE(plugin.states.changed());  // a switch is nothing to copy
    EXPECT_EQ(plugin.value, 2.0f);
    plugin.push(3.0f);
    EXPECT_TRUE(plugin.states.changed());
}

TEST(CompareStates, FollowUndoAndKeepTheStateThatIsLeft)
{
    FakePlugin plugin;
    plugin.value = 1.0f;
    plugin.open();
    plugin.states.toggle();  // to B
    plugin.push(5.0f);       // in B
    plugin.states.toggle();  // to A
    EXPECT_EQ(plugin.value, 1.0f);
    struct Step {
        bool redo;
        int current;
        float value;
    };
    for (const auto& [redo, current, value] :
         {Step{false, 1, 5.0f}, Step{false, 1, 1.0f}, Step{false, 0, 1.0f}, Step{true, 1, 1.0f},
          Step{true, 1, 5.0f}, Step{true, 0, 1.0f}}) {
        if (redo)
            plugin.history.redo();
        else
            plugin.history.undo();
        EXPECT_EQ(plugin.states.current(), current);
        EXPECT_EQ(plugin.value, value);
    }
    // A move without a step is kept when undo leaves A for B.
    plugin.value = 8.0f;
    plugin.history.undo();
    EXPECT_EQ(plugin.states.current(), 1);
    EXPECT_EQ(plugin.value, 5.0f);
    plugin.states.toggle();
    EXPECT_EQ(plugin.value, 8.0f);
}

TEST(CompareStates, ChangeNothingBeforeTheyWereFilled)
{
    FakePlugin plugin;
    plugin.value = 4.0f;
    plugin.states.toggle();
    EXPECT_EQ(plugin.value, 4.0f);
}
