#pragma once

#include "gui/Color.h"

namespace gui {

/// How menus, text fields and dialogs look that this platform draws itself: plain, as a desktop's own.
namespace DialogStyle {
constexpr float textPoints = 8.25f;  // 11 pixels at 96 to the inch
constexpr Color background = Color::Rgb(0xF0F0F0);
constexpr Color menuBackground = Color::Rgb(0xFAFAFA);
constexpr Color field = Color::White();
constexpr Color border = Color::Rgb(0xA0A0A0);
constexpr Color separator = Color::Rgb(0xD8D8D8);
constexpr Color text = Color::Rgb(0x202020);
constexpr Color disabledText = Color::Rgb(0xA0A0A0);
constexpr Color highlight = Color::Rgb(0x3070C0);
constexpr Color highlightedText = Color::White();
constexpr Color button = Color::Rgb(0xFDFDFD);
constexpr Color pressedButton = Color::Rgb(0xD8E4F0);
}  // namespace DialogStyle

}  // namespace gui
