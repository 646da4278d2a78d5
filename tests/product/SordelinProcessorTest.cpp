#include "product/SordelinProcessor.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"
#include "product/SordelinPlugin.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <sstream>
#include <thread>

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
    /// What an editor would see now.
    void look(bool ask = true)
    {
        std::stringstream stream;
        BinaryDataWriter writer(stream);
        if (ask)
            processor.requestModulationDisplay();
        processor.writeDisplayData(writer);
        BinaryDataReader reader(stream);
        editor.readDisplayData(reader);
        EXPECT_TRUE(reader.good());
        EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
    }

    SordelinProcessor processor;
    SordelinPlugin editor;
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
    engine.look();
    EXPECT_EQ(engine.editor.shownDistance(wetPan), 0.0f);  // nobody has asked until now
    EXPECT_EQ(engine.editor.shownTempo(), 120.0f);

    engine.run(1);
    engine.look();
    const SordelinPlugin& editor = engine.editor;
    EXPECT_NEAR(editor.shownDistance(slot1Level), -0.18f, 1e-6);  // without the slot's own depth and sign
    EXPECT_NEAR(editor.shownDistance(wetPan), -0.5f * 2.0f * 0.18f, 1e-6);  // depth 2, upside down
    EXPECT_NEAR(editor.shownDistance(crossFeedback1), 0.0f, 1e-6);          // held by its end
    EXPECT_EQ(editor.shownSource(0), 0.75f);
    EXPECT_EQ(editor.shownSource(3), 0.25f);

    // A 60th of a second is 735 samples: the sixth block brings the news.
    engine.set(tree.slots[0].bypassed, 1.0f);
    engine.run(5);
    engine.look();
    EXPECT_NE(editor.shownDistance(wetPan), 0.0f);
    engine.run(1);
    engine.look();
    EXPECT_EQ(editor.shownDistance(wetPan), 0.0f);

    // A second of sound after the last look, the engine gathers no more; a quarter of a second after the last
    // request there is nothing to be seen.
    engine.set(tree.slots[0].bypassed, 0.0f);
    engine.run(44100 / 128 + 1);
    EXPECT_FALSE(tree.engine().isDisplayActive());
    engine.look(false);
    EXPECT_NE(editor.shownSource(0), 0.0f);
    EXPECT_TRUE((engine.run(1), tree.engine().isDisplayActive()));
    std::this_thread::sleep_for(std::chrono::milliseconds(260));
    engine.look(false);
    EXPECT_EQ(editor.shownSource(0), 0.0f);
}
