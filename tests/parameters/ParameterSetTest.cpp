#include "parameters/FloatPluginParameter.h"
#include "parameters/ParameterSetArray.h"
#include "parameters/ParameterSetList.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

namespace {

class Voice : public PluginParameterSet {
public:
    Voice(GenericParameterOwner& owner, int number)
        : PluginParameterSet(owner, "Voice " + std::to_string(number))
    {}
    void initialise() override { pan.setRange(-1.0f, 1.0f, 0.5f); }

    FloatPluginParameter level{this, name() + " Level"};
    FloatPluginParameter pan{this, name() + " Pan"};
};

class VoiceArray : public ParameterSetArray<Voice> {
public:
    VoiceArray(GenericParameterOwner& owner, int count)
    {
        for (int i = 0; i < count; ++i)
            addSet(std::make_unique<Voice>(owner, i + 1));
        initialiseSets();
    }
};

class VoiceList : public ParameterSetList<Voice> {
public:
    VoiceList(GenericParameterOwner& owner, int lowest, int count) : ParameterSetList<Voice>(owner, "Voices")
    {
        for (int i = 0; i < count; ++i)
            addSet(std::make_unique<Voice>(owner, i + 1));
        numActive.setRange(lowest, count, lowest);
        initialiseSets();
    }
    std::vector<float> levels() const
    {
        std::vector<float> result(static_cast<std::size_t>(count()));
        for (int i = 0; i < count(); ++i)
            result[static_cast<std::size_t>(i)] = setAt(i).level.currentValue();
        return result;
    }
    /// Uses the first entries, with levels of 0.25, 0.5 and 0.75.
    void fill(int active)
    {
        numActive.setValue(static_cast<float>(active), announceChange);
        for (int i = 0; i < active; ++i)
            setAt(i).level.setValue(0.25f * static_cast<float>(i + 1), announceChange);
    }
};

TEST(PluginParameterSet, PutsItsParametersInItsOwnListAndInThePlugIns)
{
    RecordingOwner owner;
    const FloatPluginParameter before(&owner, "Before");
    Voice voice(owner, 1);
    EXPECT_EQ(voice.parameterCount(), 2);
    EXPECT_EQ(&voice.parameterAt(1), &voice.pan);
    EXPECT_EQ(voice.pan.index(), 2);
    EXPECT_EQ(owner.groupOf(voice.pan), "Voice 1");
    EXPECT_EQ(owner.groupOf(before), "");

    voice.addAlias(voice.pan, "Old Pan");
    EXPECT_EQ(voice.pan.aliases, (std::vector<std::string>{"Old Pan"}));
    voice.pan.setValue(1.0f, noEcho);
    EXPECT_EQ(owner.changes, (std::vector<RecordingOwner::Change>{{2, 1.0f, noEcho}}));
    voice.beginChange();
    EXPECT_EQ(owner.openBrackets, 1);
    voice.endChange();
    EXPECT_EQ(owner.openBrackets, 0);
}

TEST(PluginParameterSet, SetsOfOneNameShareAGroup)
{
    RecordingOwner owner;
    const Voice a(owner, 1);
    const Voice b(owner, 1);
    const Voice c(owner, 2);
    EXPECT_EQ(a.groupIndex(), b.groupIndex());
    EXPECT_NE(a.groupIndex(), c.groupIndex());
}

TEST(ParameterSetArray, KnowsWhichSetHoldsAParameter)
{
    RecordingOwner owner;
    const FloatPluginParameter before(&owner, "Before");
    VoiceArray voices(owner, 3);  // indices 1 to 6
    const FloatPluginParameter behind(&owner, "Behind");
    const int sets[] = {-1, 0, 0, 1, 1, 2, 2, -1};
    for (int index = 0; index < 8; ++index) {
        EXPECT_EQ(voices.setIndexOf(index), sets[index]) << index;
        EXPECT_EQ(voices.ownsParameter(index), sets[index] >= 0) << index;
    }
    EXPECT_TRUE(voices.ownsParameter(-1));
    EXPECT_EQ(voices.firstParameterIndex(), 1);

    const VoiceArray none(owner, 0);
    EXPECT_EQ(none.firstParameterIndex(), -1);
    EXPECT_FALSE(none.ownsParameter(-1));
    EXPECT_FALSE(none.ownsParameter(0));
    EXPECT_EQ(none.setIndexOf(0), -1);
}

TEST(ParameterSetArray, ResetsToDefaults)
{
    RecordingOwner owner;
    VoiceArray voices(owner, 2);
    voices[1].level.setValue(1.0f, announceChange);
    voices[1].pan.setValue(-1.0f, announceChange);
    voices.resetToDefaults();
    EXPECT_EQ(voices[1].level.currentValue(), 0.0f);
    EXPECT_EQ(voices[1].pan.currentValue(), 0.5f);
}

TEST(ParameterSetList, BeginsWithItsLength)
{
    RecordingOwner owner;
    VoiceList voices(owner, 0, 2);
    EXPECT_EQ(voices.numActive.displayName(), "Num Active Voices");
    EXPECT_EQ(voices.firstParameterIndex(), 0);
    EXPECT_TRUE(voices.ownsParameter(0));
    EXPECT_EQ(voices.setIndexOf(0), -1);
    EXPECT_EQ(voices.setIndexOf(4), 1);

    ParameterCollection all;
    voices.addAllParameters(all);
    ASSERT_EQ(all.count(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(all.at(i).index(), i);
}

TEST(ParameterSetList, RemovingMovesTheEntriesBehindUp)
{
    struct Row {
        int removed;
        int active;
        std::vector<float> levels;
    };
    const Row rows[] = {
        {0, 2, {0.5f, 0.75f, 0.0f, 0.0f}},   {1, 2, {0.25f, 0.75f, 0.0f, 0.0f}},
        {2, 2, {0.25f, 0.5f, 0.0f, 0.0f}},   {3, 3, {0.25f, 0.5f, 0.75f, 0.0f}},  // not in use
        {-1, 3, {0.25f, 0.5f, 0.75f, 0.0f}},
    };
    for (const auto& [removed, active, levels] : rows) {
        RecordingOwner owner;
        VoiceList voices(owner, 0, 4);
        voices.fill(3);
        const int parameters = owner.parameterCount();
        owner.changedOutsideBracket = false;
        voices.removeSet(removed);
        EXPECT_EQ(voices.levels(), levels) << removed;
        EXPECT_EQ(voices.numActive.value(), active) << removed;
        EXPECT_EQ(owner.brackets, active == 2 ? 1 : 0) << removed;
        EXPECT_EQ(owner.openBrackets, 0);
        EXPECT_FALSE(owner.changedOutsideBracket);
        EXPECT_EQ(owner.parameterCount(), parameters);
    }
}

TEST(ParameterSetList, TheLastEntryGoesBackToItsDefaults)
{
    RecordingOwner owner;
    VoiceList voices(owner, 0, 2);
    voices.fill(1);
    voices[0].pan.setValue(-1.0f, announceChange);
    voices.removeSet(0);
    EXPECT_EQ(voices.numActive.value(), 0);
    EXPECT_EQ(voices[0].level.currentValue(), 0.0f);
    EXPECT_EQ(voices[0].pan.currentValue(), 0.5f);
}

TEST(ParameterSetList, KeepsItsLeastNumberOfEntries)
{
    RecordingOwner owner;
    VoiceList voices(owner, 1, 4);
    voices.fill(1);
    voices.removeSet(0);
    EXPECT_EQ(voices.numActive.value(), 1);
    EXPECT_EQ(voices[0].level.currentValue(), 0.25f);
}

TEST(ParameterSetList, ListsThatBelongToItMoveAlong)
{
    RecordingOwner owner;
    VoiceList voices(owner, 0, 3);
    VoiceList shades(owner, 0, 3);
    voices.addSubList(shades);
    voices.fill(3);
    shades.fill(3);
    voices.removeSet(0);
    EXPECT_EQ(shades.levels(), (std::vector<float>{0.5f, 0.75f, 0.0f}));
    EXPECT_TRUE(voices.ownsParameter(shades[2].pan.index()));
    EXPECT_EQ(voices.setIndexOf(shades[0].pan.index()), -1);
}

TEST(NumActiveParameter, EnablesWhatTheEntriesInUseRun)
{
    struct Runner : wave::Source {
        using Source::Source;
        void generate(wave::Block*, int, int) noexcept override {}
    };
    wave::Environment environment;
    Runner a(environment);
    Runner c(environment);
    NumActiveParameter active(nullptr, "Num Active Runners");
    active.setRange(0, 3, 0);
    active.addEntryObjects({&a, nullptr, &c});
    active.deliverValue(1.0f);
    EXPECT_TRUE(a.isEnabled());
    EXPECT_FALSE(c.isEnabled());
    active.deliverValue(3.0f);
    EXPECT_TRUE(c.isEnabled());
}

}  // namespace
