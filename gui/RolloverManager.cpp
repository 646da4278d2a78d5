#include "gui/RolloverManager.h"

#include "gui/AnimatedControl.h"
#include "gui/Bitmap.h"
#include "gui/BitmapMixing.h"
#include "gui/UserInterface.h"
#include "gui/ValueAnimation.h"

namespace gui {

namespace {

constexpr int fadeInMs = 100;
constexpr int fadeOutMs = 300;

}  // namespace

RolloverManager::RolloverManager(AnimatedControl& fadedControl) : control(fadedControl) {}

RolloverManager::~RolloverManager() { StopFade(); }

void RolloverManager::StopFade()
{
    if (Animator* animator = control.GetAnimator())
        animator->Stop(AnimationKey(this));
}

void RolloverManager::SetBlend(int newBlend)
{
    if (newBlend == blend)
        return;
    blend = newBlend;
    control.Invalidate();
}

void RolloverManager::SetState(bool on)
{
    if (on == targetState)
        return;
    targetState = on;
    Animator* animator = control.GetAnimator();
    if (!animator)
        return SetBlend(on ? 255 : 0);
    auto& fade = animator->Start<ValueAnimation<int, int>>(
        &control, AnimationKey(this), [this](int value) { SetBlend(value); }, blend, on ? 255 : 0);
    fade.Duration.assign(on ? fadeInMs : fadeOutMs);
}

void RolloverManager::Finish()
{
    StopFade();
    SetBlend(targetState ? 255 : 0);
}

const Bitmap* RolloverManager::Picture(const Bitmap* normal, const Bitmap* active, int index)
{
    if (blend == 0 || (!active && normal))
        return normal;
    if (blend == 255 || !active)
        return active;
    std::unique_ptr<Bitmap>& mixed = blendBitmaps[static_cast<std::size_t>(index)];
    if (!mixed)
        mixed = std::make_unique<Bitmap>(control.userInterface.Backing());
    CrossfadeBitmaps(*mixed, normal, active, blend);
    return mixed.get();
}

}  // namespace gui
