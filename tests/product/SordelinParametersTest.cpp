#include "product/SordelinParameters.h"

#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

namespace {

struct Tree {
    Tree() { parameters.initialise(); }
    AbstractPluginParameter& operator[](int index) const { return owner.parameterAt(index); }

    RecordingOwner owner;
    ModulationMatrixOwner modulation;
    SordelinParameters parameters{owner, modulation};
};

enum Step : bool { Smooth = false, Stepped = true };

struct ParameterRow {
    int index;
    Step step;
    const char* group;
    const char* name;
    float minimum;
    float maximum;
    float initial;
    const char* initialText;
};

// Both ends of every block, and each kind of parameter at least once.
const ParameterRow parameterRows[] = {
    {0, Smooth, "Delay 1", "Delay 1 Time", 0, 1, 0.29333879f, "350.0 ms"},
    {1, Smooth, "Delay 1", "Delay 1 Offset", -1, 1, 0, "1.000"},
    {2, Stepped, "Delay 1", "Delay 1 Sync", 0, 4, 0, "Free"},
    {3, Smooth, "Delay 1", "Delay 1 Feedback", 0, 1, 0, "0.000"},
    {4, Smooth, "Delay 1", "Delay 1 Cross Feedback", 0, 1, 0, "0.000"},
    {5, Stepped, "Delay 1", "Delay 1 Feedback Invert", 0, 1, 0, "Normal"},
    {6, Smooth, "Delay 1", "Delay 1 Pan", -1, 1, 0, "0.000"},
    {7, Smooth, "Delay 2", "Delay 2 Time", 0, 1, 0.29333879f, "350.0 ms"},
    {13, Smooth, "Delay 2", "Delay 2 Pan", -1, 1, 0, "0.000"},
    {14, Stepped, "", "Feedback Link", 0, 1, 0, "Separate"},
    {15, Stepped, "", "Delay Link", 0, 1, 0, "Separate"},
    {16, Stepped, "", "Delay Buffer Read Style", 0, 1, 0, "Tape"},
    {17, Stepped, "", "Delay Freeze", 0, 1, 0, "Off"},
    {18, Smooth, "Filter 1", "Filter 1 Freq", 0, 1, 1, "75616 Hz"},  // 2 to the power 16.2064
    {19, Smooth, "Filter 1", "Filter 1 Pan", -3.5f, 3.5f, 0, "0.000"},
    {20, Smooth, "Filter 1", "Filter 1 Peak", 0, 1, 0, "0.000"},
    {21, Stepped, "Filter 1", "Filter 1 Characteristic", 0, 10, 1, "Gentle"},
    {22, Stepped, "Filter 1", "Filter 1 Response", 0, 2, 0, "LP"},
    {23, Stepped, "Filter 1", "Filter 1 Slope", 1, 3, 1, "12"},
    {24, Stepped, "Filter 1", "Filter 1 Enabled", 0, 1, 1, "Enabled"},
    {25, Smooth, "Filter 2", "Filter 2 Freq", 0, 1, 1, "75616 Hz"},
    {31, Stepped, "Filter 2", "Filter 2 Enabled", 0, 1, 1, "Enabled"},
    {32, Stepped, "", "Filter Routing", 0, 2, 0, "Serial"},
    {33, Smooth, "", "Input Level", -36, 36, 0, "0.00 dB"},
    {34, Smooth, "", "Dry Level", 0, 1, 1, "0.00 dB"},
    {35, Smooth, "", "Dry Pan", -1, 1, 0, "0.000"},
    {36, Smooth, "", "Wet Level", 0, 1, 1, "0.00 dB"},
    {37, Smooth, "", "Wet Pan", -1, 1, 0, "0.000"},
    {38, Stepped, "", "Channel Mode", 0, 1, 0, "Left/Right"},
    {39, Stepped, "", "Num Active XY Controllers", 0, 4, 0, "0"},
    {40, Smooth, "XY Controller 1", "XY Controller 1 Hor", -1, 1, 0, "0.000"},
    {47, Smooth, "XY Controller 4", "XY Controller 4 Ver", -1, 1, 0, "0.000"},
    {48, Stepped, "", "Num Active XLFOs", 0, 6, 0, "0"},
    {49, Smooth, "XLFO 1", "XLFO 1 Frequency", 0, 1, 0.24800393f, "1.000 Hz"},
    {50, Smooth, "XLFO 1", "XLFO 1 Frequency Offset", -1, 1, 0, "1.000"},
    {51, Smooth, "XLFO 1", "XLFO 1 Balance", 0, 1, 0.5f, "0.500"},
    {52, Smooth, "XLFO 1", "XLFO 1 Phase Offset", 0, 1, 0, "0.000"},
    {53, Smooth, "XLFO 1", "XLFO 1 Glide", -1, 1, 0, "0.000"},
    {54, Stepped, "XLFO 1", "XLFO 1 Sync Mode", 0, 11, 0, "Free"},
    {55, Stepped, "XLFO 1", "XLFO 1 MIDI Trigger", 0, 1, 0, "Off"},
    {56, Stepped, "XLFO 1", "XLFO 1 Snap", 0, 1, 0, "No Snap"},
    {57, Stepped, "XLFO 1", "Num Active XLFO 1 Steps", 1, 16, 2, "2"},
    {58, Smooth, "XLFO 1", "XLFO 1 Step 1 Value", -1, 1, 0, "0.000"},
    {59, Smooth, "XLFO 1", "XLFO 1 Step 1 Glide", 0, 1, 0, "0.000"},
    {60, Stepped, "XLFO 1", "XLFO 1 Step 1 Glide function", 0, 3, 0, "Linear"},
    {61, Stepped, "XLFO 1", "XLFO 1 Step 1 Random", 0, 1, 0, "Fixed"},
    {121, Stepped, "XLFO 1", "XLFO 1 Step 16 Random", 0, 1, 0, "Fixed"},
    {122, Smooth, "XLFO 2", "XLFO 2 Frequency", 0, 1, 0.24800393f, "1.000 Hz"},
    {422, Stepped, "XLFO 6", "Num Active XLFO 6 Steps", 1, 16, 2, "2"},
    {486, Stepped, "XLFO 6", "XLFO 6 Step 16 Random", 0, 1, 0, "Fixed"},
    {487, Stepped, "", "Num Active EGs", 0, 6, 0, "0"},
    {488, Smooth, "EG 1", "EG 1 Hold", 0, 1, 0, "0.000 ms"},
    {489, Smooth, "EG 1", "EG 1 Delay", 0, 1, 0, "0.000 ms"},
    {490, Smooth, "EG 1", "EG 1 Threshold", 0, 1, 0.27976302f, "-24.00 dB"},
    {491, Stepped, "EG 1", "EG 1 Triggering", 0, 2, 0, "Normal Input"},
    {492, Smooth, "EG 1", "EG 1 Attack", 0, 1, 0, "0.000 ms"},
    {493, Smooth, "EG 1", "EG 1 Decay", 0, 1, 0, "0.000 ms"},
    {494, Smooth, "EG 1", "EG 1 Sustain", 0, 1, 1, "0.00 dB"},
    {495, Smooth, "EG 1", "EG 1 Release", 0, 1, 0, "0.000 ms"},
    {535, Smooth, "EG 6", "EG 6 Release", 0, 1, 0, "0.000 ms"},
    {536, Stepped, "", "Num Active EFs", 0, 4, 0, "0"},
    {537, Stepped, "EF 1", "EF 1Input", 0, 1, 0, "Normal Input"},
    {538, Smooth, "EF 1", "EF 1 Attack", 0, 1, 0, "1.000 ms"},
    {539, Smooth, "EF 1", "EF 1 Release", 0, 1, 0, "50.00 ms"},
    {548, Smooth, "EF 4", "EF 4 Release", 0, 1, 0, "50.00 ms"},
    {549, Stepped, "", "Num Active MIDI Sources", 0, 10, 0, "0"},
    {550, Stepped, "MIDI Source 1", "MIDI Source 1 Input", 0, 5, 0, "Mod Wheel"},
    {551, Stepped, "MIDI Source 1", "MIDI Source 1 Controller Number", 0, 127, 0, "0"},
    {552, Stepped, "MIDI Source 1", "MIDI Source 1 Response Curve", 0, 5, 0, "Linear"},
    {579, Stepped, "MIDI Source 10", "MIDI Source 10 Response Curve", 0, 5, 0, "Linear"},
    {580, Stepped, "", "Receive Midi", 0, 1, 0, "Disabled"},
    {581, Stepped, "", "Num Active Slots", 0, 24, 0, "0"},
    {582, Stepped, "Slot 1", "Slot 1 Source", 0, 34, 0, "< Source >"},
    {583, Smooth, "Slot 1", "Slot 1 Level", 0, 1, 0.5f, "0.160"},
    {584, Stepped, "Slot 1", "Slot 1 Bypassed", 0, 1, 0, "Normal"},
    {585, Stepped, "Slot 1", "Slot 1 Inverted", 0, 1, 0, "Normal"},
    {586, Stepped, "Slot 1", "Slot 1 Target", 0, 107, 0, "< Target >"},
    {701, Stepped, "Slot 24", "Slot 24 Target", 0, 107, 0, "< Target >"},
    {702, Stepped, "", "Auto Mute Self-Osc", 0, 1, 0, "Off"},
    {703, Stepped, "", "Audition Signal", 0, 2, 0, "Output"},
    {704, Stepped, "", "Dry Enabled", 0, 1, 1, "Enabled"},
};

TEST(SordelinParameters, HostsSeeTheListThatSongsWereSavedWith)
{
    const Tree tree;
    ASSERT_EQ(tree.owner.parameterCount(), 705);
    for (const ParameterRow& row : parameterRows) {
        const AbstractPluginParameter& parameter = tree[row.index];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(parameter.index(), row.index);
        EXPECT_EQ(parameter.displayName(), row.name);
        EXPECT_EQ(tree.owner.groupOf(parameter), row.group);
        EXPECT_EQ(parameter.minimumValue(), row.minimum);
        EXPECT_EQ(parameter.maximumValue(), row.maximum);
        EXPECT_EQ(parameter.defaultValue(), row.initial);
        EXPECT_EQ(parameter.valueText(row.initial), row.initialText);
        EXPECT_EQ(parameter.stepped, row.step);
    }
}

TEST(SordelinParameters, EveryParameterIsReadyForUse)
{
    const Tree tree;
    std::set<std::string> names;
    for (int i = 0; i < tree.owner.parameterCount(); ++i) {
        const AbstractPluginParameter& parameter = tree[i];
        SCOPED_TRACE(parameter.displayName());
        EXPECT_TRUE(names.insert(parameter.displayName()).second);
        EXPECT_EQ(parameter.name, parameter.displayName());
        EXPECT_TRUE(parameter.automatable);
        EXPECT_FALSE(parameter.helpText.empty());
        EXPECT_LT(parameter.minimumValue(), parameter.maximumValue());
        EXPECT_EQ(parameter.currentValue(), parameter.defaultValue());
        EXPECT_GE(parameter.defaultValue(), parameter.minimumValue());
        EXPECT_LE(parameter.defaultValue(), parameter.maximumValue());
    }
    EXPECT_TRUE(tree.owner.changes.empty());
}

TEST(SordelinParameters, SignalsRunOverTheirRange)
{
    struct Row {
        int index;
        double atMinimum;
        double atDefault;
        double atMaximum;
    };
    const Row rows[] = {
        {0, 5.0, 350.0, 5000.0},         // ms
        {1, 0.5, 1.0, 2.0},              // a factor
        {3, 0.0, 0.0, 2.0},              // a gain
        {4, 0.0, 0.0, 1.0},              //
        {18, 2.2666, 16.2064, 16.2064},  // log2 of Hz
        {19, -3.5, 0.0, 3.5},            // octaves
        {23, 1.0, 1.0, 3.0},             // the slope's number
        {33, 0.015848932, 1.0, 63.095734},
        {34, 0.0, 1.0, 1.0},
        {49, 0.02, 1.0, 500.0},  // Hz
        {50, 0.5, 1.0, 2.0},
        {488, 0.0, 0.0, 19.0},  // seconds
        {489, 0.0, 0.0, 5.0},
        {490, 0.0, 0.063095734, 1.0},
        {492, 0.0, 0.0, 3.0},
        {493, 0.0, 0.0, 5.0},
        {495, 0.0, 0.0, 5.0},
        {538, 0.001, 0.001, 1.0},
        {539, 0.05, 0.05, 5.0},
        {583, 0.0, 0.16, 1.0},
    };
    const Tree tree;
    for (const auto& [index, atMinimum, atDefault, atMaximum] : rows) {
        const AbstractPluginParameter& parameter = tree[index];
        SCOPED_TRACE(parameter.displayName());
        EXPECT_NEAR(parameter.valueToSignal(parameter.minimumValue()), atMinimum,
                    std::fabs(atMinimum) * 5e-7);
        EXPECT_NEAR(parameter.valueToSignal(parameter.defaultValue()), atDefault,
                    std::fabs(atDefault) * 5e-7);
        EXPECT_NEAR(parameter.valueToSignal(parameter.maximumValue()), atMaximum,
                    std::fabs(atMaximum) * 5e-7);
    }
}

TEST(SordelinParameters, PositionsAreNamed)
{
    struct Row {
        int index;
        const char* items;
    };
    const Row rows[] = {
        {2, "Free,Two Notes,Note,Half Note,Quarter Note"},
        {5, "Normal,Inverted"},
        {14, "Separate,Linked"},
        {15, "Separate,Linked"},
        {16, "Tape,Stretch"},
        {17, "Off,On"},
        {21, "Morvelane Prime,Gentle,Raw,Tube,Metal,Easy Going,Smooth,Hard,Hollow,Extreme,Clean"},
        {22, "LP,HP,BP"},
        {23, "12,24,48"},
        {24, "Disabled,Enabled"},
        {32, "Serial,Parallel,Per Channel"},
        {38, "Left/Right,Mid/Side"},
        {54, "Free,16,8,4,2,1,1/2,1/4,1/8,1/16,1/32,1/64"},
        {55, "Off,On"},
        {56, "No Snap,Snap"},
        {60, "Linear,Sqr,Sqrt,Sine"},
        {61, "Fixed,Random"},
        {491, "Normal Input,Side Chain,MIDI"},
        {537, "Normal Input,Side Chain"},
        {550, "Mod Wheel,Pitch Bend,Velocity,Aftertouch,KB Track,Controller"},
        {552, "Linear,Exp,Log,Sqr,Sqrt,Sine"},
        {580, "Disabled,Enabled"},
        {584, "Normal,Bypassed"},
        {585, "Normal,Inverted"},
        {702, "Off,On"},
        {703, "Output,Input,Side Chain"},
        {704, "Disabled,Enabled"},
    };
    const Tree tree;
    for (const auto& [index, items] : rows) {
        const AbstractPluginParameter& parameter = tree[index];
        std::string joined;
        const int last = static_cast<int>(parameter.maximumValue());
        for (int position = static_cast<int>(parameter.minimumValue()); position <= last; ++position)
            joined.append(joined.empty() ? "" : ",")
                .append(parameter.valueText(static_cast<float>(position)));
        EXPECT_EQ(joined, items) << parameter.displayName();
    }
}

TEST(SordelinParameters, TextsSayWhatUsersKnow)
{
    struct Row {
        int index;
        float value;
        const char* text;
    };
    // A travel of 0.5 is 0.16 on the knob's curve, and 0.5 is 0.007 on the rate's.
    const Row rows[] = {
        {0, 0.0f, "5.000 ms"},
        {0, 1.0f, "5.000 sec"},
        {0, 0.5f, "804.2 ms"},  // 5 + 0.16 * 4995
        {1, -1.0f, "0.500"},
        {3, 0.5f, "0.320"},
        {19, 3.5f, "1.000"},
        {19, -1.75f, "-0.500"},
        {18, 0.0f, "4.812 Hz"},  // 2 to the power 2.2666
        {33, 6.0f, "+6.00 dB"},
        {33, -36.0f, "-36.00 dB"},
        {34, 0.0f, "-INF dB"},
        {34, 0.5f, "-18.00 dB"},  // half of 36 dB
        {49, 0.5f, "3.520 Hz"},   // 0.02 + 0.007 * 499.98
        {488, 1.0f, "19.00 sec"},
        {494, 0.0f, "-INF dB"},
        {551, 74.0f, "74"},
        {582, 9.0f, "XLFO 1"},
        {586, 11.0f, "Filter 1 Freq"},
    };
    const Tree tree;
    for (const auto& [index, value, text] : rows)
        EXPECT_EQ(tree[index].valueText(value), text) << tree[index].displayName() << " at " << value;
}

/// Values all over a parameter's range, more of them near its ends, where curves are steep and texts change.
std::vector<float> spreadValues(const AbstractPluginParameter& parameter)
{
    constexpr int count = 150;
    const float low = parameter.minimumValue();
    const float range = parameter.maximumValue() - low;
    std::vector<float> values;
    for (int i = 0; i <= count; ++i) {
        const float n = static_cast<float>(i) / count;
        for (const float normal : {n, std::pow(n, 5.0f), 1.0f - std::pow(n, 3.0f)})
            values.push_back(low + normal * range);
    }
    return values;
}

TEST(SordelinParameters, EveryTextReadsBackAsItself)
{
    const Tree tree;
    for (int i = 0; i < tree.owner.parameterCount(); ++i)
        for (const float value : spreadValues(tree[i])) {
            const std::string text = tree[i].valueText(value);
            const auto parsed = tree[i].parseText(text);
            ASSERT_TRUE(parsed) << tree[i].displayName() << ": " << text;
            ASSERT_EQ(tree[i].valueText(*parsed), text) << tree[i].displayName() << " at " << value;
            ASSERT_GE(*parsed, tree[i].minimumValue());
            ASSERT_LE(*parsed, tree[i].maximumValue());
        }
}

TEST(SordelinParameters, AHalfAsPercentIsTheMiddleOfEveryContinuousRange)
{
    const Tree tree;
    for (int i = 0; i < tree.owner.parameterCount(); ++i) {
        const AbstractPluginParameter& parameter = tree[i];
        if (parameter.stepped)
            continue;
        const float middle = (parameter.minimumValue() + parameter.maximumValue()) / 2.0f;
        EXPECT_EQ(parameter.parseText("50%"), middle) << parameter.displayName();
        EXPECT_EQ(parameter.parseText("nonsense"), std::nullopt) << parameter.displayName();
    }
}

TEST(SordelinParameters, EveryTargetBelongsToTheParameterOfItsName)
{
    const Tree tree;
    std::map<int, std::string> names;
    for (int i = 0; i < tree.owner.parameterCount(); ++i)
        if (const auto* parameter = dynamic_cast<const ModulationTargetParameter*>(&tree[i]))
            names[parameter->targetId()] = parameter->displayName();
    ASSERT_EQ(names.size(), 107u);
    const AbstractPluginParameter& slotTarget = tree.parameters.slots[0].target;
    for (const auto& [id, name] : names) {
        // The list abbreviates "XLFO 1 Frequency"; position 0 is no target.
        const std::string item = slotTarget.valueText(static_cast<float>(id + 1));
        EXPECT_EQ(name.substr(0, item.size()), item) << id;
    }
}

TEST(SordelinParameters, ASignalStaysWithinItsTarget)
{
    // But for the feedback, whose knob goes on to where modulation alone may take the loop.
    const Tree tree;
    for (int i = 0; i < tree.owner.parameterCount(); ++i) {
        const auto* parameter = dynamic_cast<const ModulationTargetParameter*>(&tree[i]);
        if (!parameter || parameter->displayName().ends_with("1 Feedback") ||
            parameter->displayName().ends_with("2 Feedback"))
            continue;
        const ModulationRange& range = tree.modulation.configuration.rangeOf(parameter->targetId());
        EXPECT_LE(parameter->valueToSignal(parameter->maximumValue()), range.upper * 1.000001f)
            << parameter->displayName();
    }
}

TEST(SordelinParameters, RemovingAnXlfoMovesItsStepsToo)
{
    Tree tree;
    XLFOParameterSetList& xlfos = tree.parameters.xlfos;
    xlfos.numActive.setValue(2.0f, announceChange);
    xlfos[1].steps.numActive.setValue(5.0f, announceChange);
    xlfos[1].steps[15].value.setValue(0.75f, announceChange);
    xlfos.removeSet(0);
    EXPECT_EQ(xlfos[0].steps.numActive.value(), 5);
    EXPECT_EQ(xlfos[0].steps[15].value.currentValue(), 0.75f);
    EXPECT_EQ(xlfos[1].steps.numActive.value(), 2);
    EXPECT_EQ(xlfos[1].steps[15].value.currentValue(), 0.0f);
}

TEST(SordelinParameters, ListsKnowTheirParameters)
{
    const Tree tree;
    const SordelinParameters& parameters = tree.parameters;
    EXPECT_EQ(parameters.delays.setIndexOf(13), 1);
    EXPECT_EQ(parameters.xlfos.firstParameterIndex(), 48);
    EXPECT_EQ(parameters.xlfos.setIndexOf(121), 0);
    EXPECT_EQ(parameters.xlfos.setIndexOf(122), 1);
    EXPECT_TRUE(parameters.xlfos.ownsParameter(486));
    EXPECT_FALSE(parameters.xlfos.ownsParameter(487));
    EXPECT_EQ(parameters.xlfos[1].steps.setIndexOf(131), 0);
    EXPECT_EQ(parameters.slots.setIndexOf(701), 23);
}

}  // namespace
