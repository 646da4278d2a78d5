#include "gui/AnimatedControl.h"
#include "gui/FadeAnimation.h"
#include "gui/ValueAnimation.h"
#include "support/ControlsFixture.h"

namespace gui {

using AnimatorTest = ControlsFixture;

TEST(AnimationMotion, RunsFromNothingToAllAlongItsCurve)
{
    // At the middle: t^2 (3 - 2t) = 0.5; (0.7^4 - 0.4^4) / (1 - 0.4^4) = 0.2145 / 0.9744.
    struct Row {
        AnimationMotion motion;
        float middle;
    };
    for (const Row& row :
         {Row{AnimationMotion::Linear, 0.5f}, Row{AnimationMotion::Smooth, 0.5f},
          Row{AnimationMotion::Accelerate, 0.220135f}, Row{AnimationMotion::Decelerate, 0.779865f}}) {
        EXPECT_NEAR(ApplyMotion(row.motion, 0.0f), 0.0f, 1e-6f);
        EXPECT_NEAR(ApplyMotion(row.motion, 0.5f), row.middle, 1e-5f);
        EXPECT_NEAR(ApplyMotion(row.motion, 1.0f), 1.0f, 1e-6f);
    }
}

TEST_F(AnimatorTest, MovesPropertiesOfAllKinds)
{
    Property<int> steps{0};
    Property<float> level{1.0f};
    Control control(*ui, &root());
    float seen = 0.0f;
    animator.Start<ValueAnimation<int>>(nullptr, {}, steps, 0, 100);
    animator.Start<ValueAnimation<float>>(nullptr, {}, level, 1.0f, 3.0f);
    animator.Start<ValueAnimation<float>>(nullptr, {}, control.Left, 10.0f, 20.0f);
    animator.Start<ValueAnimation<float>>(
        nullptr, {}, [&](float value) { seen = value; }, 0.0f, -1.0f);
    ui->AdvanceTime(100);  // of 200
    EXPECT_NEAR(steps.value(), 50, 5);
    EXPECT_NEAR(level.value(), 1.0f + static_cast<float>(steps.value()) / 50.0f, 0.02f);
    EXPECT_NEAR(control.GetLeft(), 15.0f, 0.5f);
    ui->AdvanceTime(120);
    EXPECT_EQ(steps.value(), 100);
    EXPECT_EQ(level.value(), 3.0f);
    EXPECT_EQ(control.GetLeft(), 20.0f);
    EXPECT_EQ(seen, -1.0f);
    EXPECT_EQ(animator.RunningCount(), 0);
}

TEST_F(AnimatorTest, WithoutDurationItEndsAtItsFirstStep)
{
    Property<int> value{0};
    int updates = 0, ends = 0;
    auto& animation = animator.Start<ValueAnimation<int>>(
        nullptr, {}, [&](int v) { value.assign(v), ++updates; }, 0, 7);
    animation.Duration.assign(0);
    on(animation.OnFinished, [&] { ++ends; });
    EXPECT_EQ(updates, 0);
    ui->AdvanceTime(10);
    EXPECT_EQ(value.value(), 7);
    EXPECT_EQ(updates, 1);
    EXPECT_EQ(ends, 1);
}

TEST_F(AnimatorTest, OneAnimationOfAKeyRuns)
{
    Property<int> value{0};
    int firstEnds = 0, secondEnds = 0;
    on(animator.Start<ValueAnimation<int>>(nullptr, AnimationKey(&value), value, 0, 100).OnFinished,
       [&] { ++firstEnds; });
    ui->AdvanceTime(50);
    on(animator.Start<ValueAnimation<int>>(nullptr, AnimationKey(&value), value, value.value(), 0).OnFinished,
       [&] { ++secondEnds; });
    EXPECT_EQ(animator.RunningCount(), 1);
    ui->AdvanceTime(400);
    EXPECT_EQ(value.value(), 0);
    EXPECT_EQ(firstEnds, 0);
    EXPECT_EQ(secondEnds, 1);
}

TEST_F(AnimatorTest, WhatStartsAtAnEndRunsFromTheNextStep)
{
    Property<int> value{0};
    on(animator.Start<ValueAnimation<int>>(nullptr, AnimationKey(&value), value, 0, 10).OnFinished, [&] {
        animator.Start<ValueAnimation<int>>(nullptr, AnimationKey(&value), value, 10, 30);
        EXPECT_TRUE(animator.IsRunning(AnimationKey(&value)));
    });
    ui->AdvanceTime(210);
    EXPECT_GE(value.value(), 10);
    EXPECT_LT(value.value(), 15);
    ui->AdvanceTime(210);
    EXPECT_EQ(value.value(), 30);
}

TEST_F(AnimatorTest, ADyingControlTakesItsAnimationsAlong)
{
    auto animated = std::make_unique<AnimatedControl>(*ui, &root(), &animator);
    auto plain = std::make_unique<Control>(*ui, &root());
    int updates = 0;
    animator.Start<FadeAnimation>(animated.get(), {}, *animated, 0);
    animator.Start<FadeAnimation>(plain.get(), {}, *plain, 0);
    animator.Start<ValueAnimation<int>>(
        animated.get(), {}, [&](int) { ++updates; }, 0, 1);
    ui->AdvanceTime(100);
    EXPECT_NEAR(animated->Opacity.value(), 128, 13);
    EXPECT_EQ(plain->Opacity.value(), animated->Opacity.value());
    const int before = updates;
    animated.reset();
    plain.reset();
    EXPECT_EQ(animator.RunningCount(), 0);
    ui->AdvanceTime(100);
    EXPECT_EQ(updates, before);
}

TEST_F(AnimatorTest, AnEndMayDeleteWhatEndsAndWhatIsStillToStep)
{
    auto first = std::make_unique<AnimatedControl>(*ui, &root(), &animator);
    auto second = std::make_unique<AnimatedControl>(*ui, &root(), &animator);
    on(animator.Start<FadeAnimation>(first.get(), {}, *first, 0).OnFinished, [&] {
        first.reset();
        second.reset();
    });
    animator.Start<FadeAnimation>(second.get(), {}, *second, 0);
    ui->AdvanceTime(300);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(animator.RunningCount(), 0);
}

TEST_F(AnimatorTest, AfterAPauseOfTheFramesNothingStartsInItsMiddle)
{
    ui->AdvanceTime(10);
    animator.Enabled.assign(false);
    ui->AdvanceTime(1000);
    animator.Enabled.assign(true);
    Property<int> value{0};
    animator.Start<ValueAnimation<int>>(nullptr, {}, value, 0, 100);
    ui->AdvanceTime(20);
    EXPECT_LE(value.value(), 15);
}

TEST_F(AnimatorTest, AnAnimatorOutlivesItsInterface)
{
    auto other = std::make_unique<OffscreenInterface>(std::make_unique<PlainPlatform>(), Point{10, 10});
    Animator orphan(*other);
    int updates = 0;
    orphan.Start<ValueAnimation<int>>(
        nullptr, {}, [&](int) { ++updates; }, 0, 1);
    other.reset();
    EXPECT_EQ(orphan.RunningCount(), 0);
    orphan.Enabled.assign(true);
    orphan.Start<ValueAnimation<int>>(
        nullptr, {}, [&](int) { ++updates; }, 0, 1);
    EXPECT_EQ(updates, 0);
}

}  // namespace gui
