#pragma once

#include "gui/Bitmap.h"
#include "gui/Control.h"

#include <functional>
#include <memory>

namespace gallery {

/// A still picture of a control under a hand: the control is made on a stage of its own, where the mouse
/// moves over it and may press it, and painted. So many states can be seen at once.
class Pose : public gui::Control {
public:
    /// Makes the control as a child of `parent`.
    using Maker = std::function<std::unique_ptr<gui::Control>(gui::UserInterface& ui, gui::Control* parent)>;
    enum class Hand { Away, Over, Pressing };

    /// Takes the size of the control.
    /// @param handAt  where the hand is, in the control's coordinates
    Pose(gui::UserInterface& ui, gui::Control* parent, Maker controlMaker, Hand posedHand,
         gui::Point handAt = {});

    void PaintContent(gui::Canvas& canvas) override;
    void BackingScaleChanged() override;

private:
    void Take();

    Maker maker;
    Hand hand;
    gui::Point handPosition;
    gui::Bitmap picture;
    bool taken = false;
};

}  // namespace gallery
