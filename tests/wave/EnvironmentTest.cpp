#include "support/GraphFixture.h"
#include "wave/Filter.h"
#include "wave/MultiProducer.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

float one(std::uint64_t) { return 1.0f; }

/// Two outputs, computed together.
class Pair : public wave::MultiProducer {
public:
    using MultiProducer::MultiProducer;
    int runs = 0;

protected:
    void generate(wave::Block** blocks, int count, int) noexcept override
    {
        ++runs;
        blocks[0]->fill(1.0f, count);
        blocks[1] = &environment().silentBlock();
    }
};

class PassThrough : public wave::Filter {
public:
    using Filter::Filter;

protected:
    void filter(wave::Block* in, wave::Block*, int, int) noexcept override { show(*in); }
};

}  // namespace

TEST(Producer, RunsOncePerSubBlockHoweverManyReadIt)
{
    GraphFixture graph;
    FunctionProducer source(graph.environment, one);
    PassThrough filters[3] = {PassThrough(graph.environment), PassThrough(graph.environment),
                              PassThrough(graph.environment)};
    for (PassThrough& filter : filters)
        filter.input = &source;
    for (int block = 0; block < 2; ++block) {
        graph.environment.nextGeneration();
        for (PassThrough& filter : filters) {
            const wave::Block* shown = &filter.pull(64);
            EXPECT_EQ(shown, &source.currentBlock());  // no copy
        }
        graph.environment.run(64, false);
    }
    EXPECT_EQ(source.runs.size(), 2u);
}

TEST(MultiProducer, ComputesAllOutputsWithTheFirstThatIsRead)
{
    GraphFixture graph;
    Pair pair(graph.environment);
    graph.environment.nextGeneration();
    EXPECT_EQ(pair.output(1).pull(16)[15], 0.0f);
    EXPECT_EQ(pair.output(0).pull(16)[15], 1.0f);
    EXPECT_EQ(pair.runs, 1);
    EXPECT_EQ(&pair.output(1).currentBlock(), &graph.environment.silentBlock());
}

TEST(Environment, RunsWhatNobodyReadAndDelayLinesAlways)
{
    GraphFixture graph;
    FunctionProducer lead(graph.environment, one);
    FunctionProducer free(graph.environment, one);
    lead.runAlways(0);
    free.runAlways(1);

    graph.environment.nextGeneration();
    lead.pull(8);
    free.pull(8);
    graph.environment.run(8, false);
    EXPECT_EQ(lead.runs, (std::vector<int>{wave::Environment::Pulled, wave::Environment::SecondPass}));
    EXPECT_EQ(free.runs, (std::vector<int>{wave::Environment::Pulled}));

    graph.environment.nextGeneration();
    graph.environment.run(8, false);
    EXPECT_EQ(free.runs.back(), wave::Environment::Unread);

    graph.environment.nextGeneration();
    graph.environment.run(8, true);  // only time passes
    EXPECT_EQ(lead.runs.size() + free.runs.size(), 5u);
    EXPECT_EQ(graph.environment.now(), 24u);
}

TEST(Environment, OrdersTheScheduleByLastScheduledFirst)
{
    GraphFixture graph;
    std::string order;
    const auto named = [&order](char name) {
        return [&order, name](std::uint64_t) {
            order += name;
            return 0.0f;
        };
    };
    FunctionProducer a(graph.environment, named('a')), b(graph.environment, named('b'));
    FunctionProducer c(graph.environment, named('c')), d(graph.environment, named('d'));
    FunctionProducer e(graph.environment, named('e'));
    a.runAlways(0);
    b.runAlways(0);
    c.runAlways(1);
    d.runAlways(1);
    e.runAlways(2);
    e.runAlways(2);  // stands there once
    graph.environment.nextGeneration();
    graph.environment.run(1, false);
    EXPECT_EQ(order, "badce");

    order.clear();
    b.setEnabled(false);
    d.setEnabled(false);
    d.setEnabled(true);
    graph.environment.nextGeneration();
    graph.environment.run(1, false);
    EXPECT_EQ(order, "adce");
}

TEST(Environment, ResetsByKind)
{
    using Reset = wave::Environment::Reset;
    struct Row {
        Reset kind;
        int enabledResets, disabledResets;
        bool hard;
    };
    for (const auto& [kind, enabledResets, disabledResets, hard] :
         {Row{Reset::Enabled, 1, 0, true}, Row{Reset::Everything, 1, 1, true}, Row{Reset::Soft, 0, 0, false},
          Row{Reset::EnabledHere, 1, 0, true}}) {
        GraphFixture graph;
        FunctionProducer enabled(graph.environment, one), disabled(graph.environment, one);
        enabled.registerForReset();
        disabled.registerForReset();
        disabled.setEnabled(false);
        graph.skip(100);
        graph.environment.reset(kind);
        EXPECT_EQ(enabled.resets, enabledResets);
        EXPECT_EQ(disabled.resets, disabledResets);
        EXPECT_EQ(graph.environment.softResetTime(), 100u);
        EXPECT_EQ(graph.environment.hardResetTime(), hard ? 100u : 0u);
    }
}

TEST(Environment, TellsOfANewSampleRateOnceAndOfTheSameOneNever)
{
    GraphFixture graph;
    FunctionProducer source(graph.environment, one);
    source.registerForReset();
    int fired = 0;
    graph.environment.sampleRateChanged.setHandler(NotifyEvent::handler([&](void*) { ++fired; }));
    graph.environment.setSampleRate(44100.0f);
    EXPECT_EQ(source.resets, 0);
    graph.environment.setSampleRate(96000.0f);
    EXPECT_EQ(source.resets, 1);
    EXPECT_EQ(fired, 1);
}

TEST(Environment, SharesWorkingMemoryWithThoseThatPlayInTurnOnly)
{
    wave::Environment first;
    wave::Environment second;
    wave::AlignedBuffer ofFirst(128);
    wave::AlignedBuffer ofSecond(128);
    float* const own = ofFirst.data();
    first.shareMemory(ofFirst);
    second.shareMemory(ofSecond);

    first.beginWork();
    const float* const lent = ofFirst.data();
    second.beginWork();  // while the first one works
    EXPECT_NE(ofSecond.data(), lent);
    second.endWork();
    first.endWork();
    second.beginWork();  // in turn
    EXPECT_EQ(ofSecond.data(), lent);
    second.endWork();

    first.withdraw(ofFirst);
    EXPECT_EQ(ofFirst.data(), own);
    second.markDestroying();
    EXPECT_NE(ofSecond.data(), lent);
}
