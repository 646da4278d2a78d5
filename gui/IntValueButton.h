#pragma once

#include "gui/DraggedValueButton.h"

namespace gui {

/// A whole number to drag up and down.
class IntValueButton : public DraggedValueButton {
public:
    IntValueButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                   const Style* initialStyle = nullptr)
        : DraggedValueButton(ui, parent, controlAnimator, initialStyle)
    {
        UpdateText();
    }

protected:
    std::string FormatValue() const override { return std::to_string(Value.value()); }
};

}  // namespace gui
