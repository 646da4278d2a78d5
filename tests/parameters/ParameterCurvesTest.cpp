#include "parameters/ParameterCurves.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Point {
    const ParameterCurve& curve;
    float x;
    double y;
};

// Corners as they are drawn, and places half way between two of them.
const Point points[] = {
    {knobCurve, 0.0f, 0.0},           {knobCurve, 0.05f, 0.001},      {knobCurve, 0.1f, 0.002},
    {knobCurve, 0.25f, 0.05},         {knobCurve, 0.5f, 0.16},        {knobCurve, 0.6f, 0.26},
    {knobCurve, 0.9f, 0.91},          {knobCurve, 1.0f, 1.0},         {knobCurve, -0.5f, -0.16},
    {rateCurve, 0.1f, 0.0005},        {rateCurve, 0.35f, 0.004},      {rateCurve, 0.75f, 0.065},
    {rateCurve, 0.95f, 0.5},          {rateCurve, 0.98f, 1.0},        {followerCurve, 0.15f, 0.02},
    {followerCurve, 0.5f, 0.1},       {followerCurve, 0.99f, 0.91},   {followerCurve, 1.0f, 1.0},
    {levelCurve, 1.0f, 1.0},          {levelCurve, 0.5f, 0.12589254},  // -18 dB
    {levelCurve, 0.05f, 0.011994162}, {levelCurve, 0.0f, 0.0},        {octaveCurve, -1.0f, 0.5},
    {octaveCurve, 0.5f, 1.41421356},  {decibelCurve, 20.0f, 10.0},
};

TEST(ParameterCurves, RunThroughTheirCorners)
{
    for (const auto& [curve, x, y] : points)
        EXPECT_NEAR(curve.forward(x), y, std::fabs(y) * 1e-6) << x;
}

TEST(ParameterCurves, HaveInverses)
{
    for (const auto& [curve, x, y] : points)
        EXPECT_NEAR(curve.inverse(static_cast<float>(y)), x, 2e-6) << y;
}

TEST(ParameterCurves, StayAtTheirEnds)
{
    EXPECT_EQ(knobCurve.forward(1.5f), 1.0f);
    EXPECT_EQ(knobCurve.forward(-1.5f), -1.0f);
    EXPECT_EQ(rateCurve.forward(1.0f), 1.0f);
    EXPECT_EQ(rateCurve.forward(-0.1f), 0.0f);
    EXPECT_EQ(rateCurve.inverse(1.0f), 0.98f);
    EXPECT_EQ(rateCurve.inverse(2.0f), 0.98f);
    EXPECT_EQ(followerCurve.forward(2.0f), 1.0f);
}

TEST(ParameterCurves, TheLevelsPiecesMeet)
{
    const float below = levelCurve.forward(0.1f);
    const float above = levelCurve.forward(std::nextafter(0.1f, 1.0f));
    EXPECT_NEAR(below, above, 1e-7f);
    EXPECT_NEAR(below, std::pow(10.0, -32.4 / 20.0), 1e-7);
}

}  // namespace
