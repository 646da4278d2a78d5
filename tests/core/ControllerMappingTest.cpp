#include "core/ControllerMapping.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"
#include "support/ControllerMapFile.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>
#include <vector>

namespace {

constexpr std::int32_t virtualTarget = 0x100001;

struct MapFixture : testing::Test {
    MapFixture()
    {
        map.mapChanged.addHandler(NotifyEvent::handler([this](void*) { ++changes; }));
    }
    bool read(const std::string& bytes)
    {
        std::istringstream stream(bytes);
        BinaryDataReader reader(stream);
        return map.read(reader);
    }
    std::string bytes() const
    {
        std::ostringstream stream;
        BinaryDataWriter writer(stream);
        map.write(writer);
        return stream.str();
    }
    /// No target has two controllers.
    bool isExclusive() const
    {
        for (int controller = 0; controller < 128; ++controller) {
            const std::int32_t target = map.targetOf(controller);
            if (target != -1 && map.controllerOf(target) != controller)
                return false;
        }
        return true;
    }
    ControllerMapping map;
    int changes = 0;
};

}  // namespace

TEST_F(MapFixture, GivesATargetToOneControllerAlone)
{
    struct Step {
        int controller;
        std::int32_t target;
        int changes;  // reports by this step
        std::vector<std::pair<int, std::int32_t>> after;
    };
    for (const Step& step : {
             Step{7, 33, 1, {{7, 33}, {8, -1}}},
             Step{7, 33, 0, {{7, 33}}},                        // no change
             Step{8, 33, 1, {{7, -1}, {8, 33}}},               // moves, in one report
             Step{8, virtualTarget, 1, {{8, virtualTarget}}},  // replaces
             Step{127, 0, 1, {{127, 0}}},
             Step{-1, virtualTarget, 1, {{8, -1}, {127, 0}}},  // takes away
             Step{-1, 44, 0, {{127, 0}}},
             Step{128, 0, 1, {{127, -1}}},  // no such controller: nobody has it
             Step{5, -1, 0, {{5, -1}}},
         }) {
        changes = 0;
        map.assign(step.controller, step.target);
        EXPECT_EQ(changes, step.changes) << step.controller << " " << step.target;
        for (auto [controller, target] : step.after) {
            EXPECT_EQ(map.targetOf(controller), target);
            if (target != -1) {
                EXPECT_EQ(map.controllerOf(target), controller);
            }
        }
        EXPECT_TRUE(isExclusive());
    }
    EXPECT_EQ(map.controllerOf(33), -1);
    EXPECT_EQ(map.controllerOf(-1), -1);
    EXPECT_EQ(map.targetOf(-1), -1);
    EXPECT_EQ(map.targetOf(128), -1);
}

TEST_F(MapFixture, EmptiesItselfInOneReport)
{
    map.assign(1, 10);
    map.assign(2, 20);
    changes = 0;
    map.reset();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(bytes(), controllerMapBytes({}));
}

TEST_F(MapFixture, KeepsItsFormInBytesBothWays)
{
    const std::string written = controllerMapBytes({{0, 704}, {1, virtualTarget}, {127, 0}});
    map.assign(64, 5);
    changes = 0;
    EXPECT_TRUE(read(written));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(map.targetOf(64), -1);  // what the bytes don't have goes
    EXPECT_EQ(bytes(), written);
}

TEST_F(MapFixture, TakesWhatABrokenOffMapHolds)
{
    const std::string whole = controllerMapBytes({{0, 300}, {63, 301}, {127, 302}});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        map.reset();
        map.assign(127, 9);
        EXPECT_EQ(read(whole.substr(0, length)), length >= 8);
        const auto complete = [&](std::size_t controller) { return length >= 8 + 4 * (controller + 1); };
        EXPECT_EQ(map.targetOf(0), complete(0) ? 300 : -1) << length;
        EXPECT_EQ(map.targetOf(63), complete(63) ? 301 : -1) << length;
        EXPECT_EQ(map.targetOf(127), 9) << length;
    }
}

TEST_F(MapFixture, StandsDamageAtEveryByte)
{
    const std::string whole = controllerMapBytes({{0, 300}, {63, 301}, {64, 302}, {127, virtualTarget}});
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (int flip : {0x01, 0x80, 0xFF}) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ flip);
            map.reset();
            map.assign(3, 77);
            const bool taken = read(damaged);
            EXPECT_EQ(taken, i >= 4);
            EXPECT_EQ(map.targetOf(3) == 77, !taken);
            EXPECT_TRUE(isExclusive()) << i;
        }
    }
    EXPECT_TRUE(read(controllerMapBytes({{10, 50}, {20, 50}})));  // one target twice
    EXPECT_EQ(map.controllerOf(50), 20);
    EXPECT_EQ(map.targetOf(10), -1);
}
