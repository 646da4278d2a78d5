#include "product/SordelinProcessor.h"

#include <gtest/gtest.h>

#include <array>

namespace {

struct Engine {
    void set(AbstractPluginParameter& parameter, float value) { parameter.setValue(value, announceChange); }
    void run(int blocks)
    {
        const std::array<const float*, 4> inputs{};
        std::array<float, 128> left{}, right{};
        const std::array outputs{left.data(), right.data()};
        for (int i = 0; i < blocks; ++i) {
            unsigned status = 0;
            processor.process(inputs.data(), 4, outputs.data(), 2, 128, status);
        }
    }
    float shown(int target) const { return processor.display().targets()[static_cast<std::size_t>(target)]; }

    SordelinProcessor processor;
};

}  // namespace

TEST(SordelinProcessor, ShowsHowFarSlotsMoveTheirTargets)
{
    constexpr int wetPan = 82, slot1Level = 83, crossFeedback1 = 3;
    Engine engine;
    SordelinProcessor& tree = engine.processor;
    engine.set(tree.xyControllers[0].horizontal, 0.5f);
    engine.set(tree.xyControllers[1].vertical, -0.5f);
    const auto connect = [&](int slot, int source, int target) {
        engine.set(tree.slots[slot].level, 0.7f);  // 0.36
        engine.set(tree.slots[slot].source, static_cast<float>(source + 1));
        engine.set(tree.slots[slot].target, static_cast<float>(target + 1));
    };
    connect(0, 0, wetPan);
    connect(1, 3, slot1Level);
    engine.set(tree.slots[0].inverted, 1.0f);
    connect(2, 3, crossFeedback1);
    engine.run(100);
    EXPECT_EQ(engine.shown(wetPan), 0.0f);  // nobody looks

    tree.engine().setDisplayActive(true);
    engine.run(1);
    EXPECT_NEAR(engine.shown(slot1Level), -0.18f, 1e-6);            // without the slot's own depth and sign
    EXPECT_NEAR(engine.shown(wetPan), -0.5f * 2.0f * 0.18f, 1e-6);  // depth 2, upside down
    EXPECT_NEAR(engine.shown(crossFeedback1), 0.0f, 1e-6);          // held by its end
    EXPECT_EQ(tree.modulationSourceValue(0), 0.75f);
    EXPECT_EQ(tree.modulationSourceValue(3), 0.25f);

    // A 60th of a second is 735 samples: the sixth block brings the news.
    engine.set(tree.slots[0].bypassed, 1.0f);
    engine.run(5);
    EXPECT_NE(engine.shown(wetPan), 0.0f);
    engine.run(1);
    EXPECT_EQ(engine.shown(wetPan), 0.0f);
}
