#pragma once

#include "gui/DraggedValueButton.h"

#include <functional>

namespace gui {

/// A value to drag whose text somebody else forms. On something that can be moved itself, a drag across the
/// button's own direction moves that.
class FloatValueButton : public DraggedValueButton {
public:
    using DraggedValueButton::DraggedValueButton;

    /// The text of a value, UTF-8.
    void SetFormat(std::function<std::string(int value)> newFormat);

protected:
    std::string FormatValue() const override { return format ? format(Value.value()) : std::string(); }
    bool HandsDragOver(Point point, int inputFlags) override;

private:
    std::function<std::string(int)> format;
};

}  // namespace gui
