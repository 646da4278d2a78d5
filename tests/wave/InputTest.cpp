#include "wave/Input.h"

#include "support/GraphFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

TEST(Input, KeepsStepWithTheClockWhenSomeBlocksGoUnread)
{
    GraphFixture graph;
    std::vector<float> samples(300);
    std::iota(samples.begin(), samples.end(), 1.0f);
    wave::Input input(graph.environment);
    input.setBuffer(samples.data(), 300);
    EXPECT_EQ(graph.render(input, 100)[99], 100.0f);
    graph.skip(100);
    EXPECT_EQ(graph.render(input, 100)[0], 201.0f);
    EXPECT_EQ(graph.render(input, 10), std::vector<float>(10, 0.0f));  // nothing left
    input.setBuffer(nullptr, 300);
    EXPECT_EQ(graph.render(input, 10), std::vector<float>(10, 0.0f));
}

TEST(Input, LetsNothingInThatALoopCouldNotGetRidOf)
{
    using Limits = std::numeric_limits<float>;
    GraphFixture graph;
    const float samples[] = {Limits::quiet_NaN(),
                             Limits::infinity(),
                             -Limits::infinity(),
                             Limits::denorm_min(),
                             Limits::min(),
                             -Limits::max(),
                             0.5f,
                             -0.5f};
    wave::Input input(graph.environment);
    input.setBuffer(samples, 8);
    const std::vector<float> expected = {0, 0, 0, 0, Limits::min(), -1e6f, 0.5f, -0.5f};
    EXPECT_EQ(graph.render(input, 8), expected);
}
