#pragma once

#include "gui/Palette.h"

namespace gui {

/// How menus, text fields and dialogs look that this platform draws itself: plain, in the
/// editor's colours.
namespace DialogStyle {
constexpr float textPoints = 8.25f;  // 11 pixels at 96 to the inch
constexpr Color background = Palette::panel;
constexpr Color menuBackground = Palette::ivory;
constexpr Color field = Palette::ivory;
constexpr Color border = Palette::edge;
constexpr Color separator = Palette::shade;
constexpr Color text = Palette::ink;
constexpr Color disabledText = Palette::edge;
constexpr Color highlight = Palette::knobDish;
constexpr Color highlightedText = Palette::white;
constexpr Color button = Palette::face;
constexpr Color pressedButton = Palette::shade;
}  // namespace DialogStyle

}  // namespace gui
