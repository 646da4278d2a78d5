#pragma once

#include "gui/Control.h"
#include "gui/Palette.h"
#include "gui/Text.h"

#include <memory>
#include <string>

namespace gallery {

/// A text that takes no mouse. It is placed by where its line begins, ends or has its middle.
class Caption : public gui::Control {
public:
    /// @param points  size of the letters
    Caption(gui::UserInterface& ui, gui::Control* parent, const std::string& string, float points = 7.5f,
            gui::Color color = gui::Palette::soft);

    /// Change, then Fit.
    gui::Text& Font() { return *text; }
    void SetString(const std::string& string);
    /// Takes the text's size.
    void Fit();
    /// Stays there whatever the text becomes.
    void Place(gui::Point point, gui::Alignment alignment = gui::Alignment::Left);

    void PaintContent(gui::Canvas& canvas) override;
    void BackingScaleChanged() override;

private:
    std::unique_ptr<gui::Text> text;
    gui::Point place;
    gui::Alignment alignment = gui::Alignment::Left;
};

}  // namespace gallery
