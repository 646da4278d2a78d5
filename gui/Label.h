#pragma once

#include "gui/MultiLabel.h"

namespace gui {

/// One line of text.
class Label : public MultiLabel {
public:
    explicit Label(UserInterface& ui, Control* parent, Animator* labelAnimator = nullptr)
        : MultiLabel(ui, parent, labelAnimator, 1)
    {}

    Text& GetText() { return Line(0); }
    void SetText(const std::string& string) { MultiLabel::SetText(0, string); }
};

}  // namespace gui
