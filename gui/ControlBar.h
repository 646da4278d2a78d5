#pragma once

#include "gui/AnimatedControl.h"

#include <vector>

namespace gui {

/// A row of controls that follow each other without gaps; its own length is theirs together. All its children
/// stand in the row: one that is made as its child goes to the end, or to the insert index.
class ControlBar : public AnimatedControl {
public:
    /// Bits of `BarAnimationFlags`: what an opening or closing changes, one after the other.
    struct AnimationFlag {
        static constexpr int size = 1, opacity = 2;
    };

    ControlBar(UserInterface& ui, Control* parent, Animator* controlAnimator);

    Property<gui::Orientation> Orientation{gui::Orientation::Horizontal, this};
    Property<bool> Animated{false, this};
    Property<int> BarAnimationFlags{AnimationFlag::size, this};

    /// Takes a control into the row at once.
    /// @param index  its place; -1 for the end
    /// @param next   goes before it, whatever `index` says; null for `index`
    void Insert(int index, Control& control, Control* next = nullptr);
    /// Closes a control: nothing of it is left along the row, but it keeps its place.
    void Collapse(Control& control);
    /// Opens a control to a length. It is as opaque as it was before it closed.
    void Expand(Control& control, float fullSize);
    /// Gives each control its place, from `first` on or from the start.
    void Relayout(const Control* first = nullptr);

    const std::vector<Control*>& Items() const { return items; }
    float LengthOf(const Control& control) const;
    void SetLength(Control& control, float length);

    void ChildChanged(Control& control, Change change) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    struct FullOpacity {
        const Control* control;
        int opacity;
    };

    bool HasItem(const Control& control) const;
    void RememberOpacity(const Control& control);

    std::vector<Control*> items;
    std::vector<FullOpacity> closed;  // what closed controls were like
    bool layingOut = false;
};

}  // namespace gui
