#pragma once

#include "gui/Geometry.h"

#include <array>
#include <memory>

namespace gui {

class AnimatedControl;
class Bitmap;

/// Fades a control's picture between a normal and an active one, as while the mouse is over it.
class RolloverManager {
public:
    static constexpr int pictureCount = 2;

    /// @param fadedControl  repainted as the blend changes; outlives this
    explicit RolloverManager(AnimatedControl& fadedControl);
    ~RolloverManager();

    /// Goes to the active picture in 100 ms or to the normal one in 300 ms; at once without an animator.
    void SetState(bool on);
    /// Ends a running fade at once where it was going.
    void Finish();
    /// 0 for the normal picture to 255 for the active one.
    int Blend() const { return blend; }
    /// The picture for the present blend, valid until the next call with the same `index`. Null if there is
    /// none.
    /// @param index  0..pictureCount - 1, for controls with several pictures
    const Bitmap* Picture(const Bitmap* normal, const Bitmap* active, int index = 0);

private:
    void SetBlend(int newBlend);
    void StopFade();

    AnimatedControl& control;
    bool targetState = false;
    int blend = 0;
    std::array<std::unique_ptr<Bitmap>, pictureCount> blendBitmaps;
};

}  // namespace gui
