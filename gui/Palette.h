#pragma once

#include "gui/Color.h"

namespace gui {

/// The colours of the editor, as they look on screen beside its pictures. Their uses are told in
/// resources/pictures/README.md, which also has the values that the pictures themselves are drawn with.
namespace Palette {
constexpr Color panel = Color::Rgb(0xE3DBCD);
constexpr Color display = Color::Rgb(0xD4CBBB);
constexpr Color face = Color::Rgb(0xF1ECE1);
constexpr Color ivory = Color::Rgb(0xFAF7EF);
constexpr Color shade = Color::Rgb(0xC0B6A4);
constexpr Color edge = Color::Rgb(0x938A7A);
constexpr Color soft = Color::Rgb(0x645D52);
constexpr Color ink = Color::Rgb(0x231F1C);
constexpr Color bar = Color::Rgb(0x262421);
constexpr Color knob = Color::Rgb(0x35312C);
constexpr Color knobDish = Color::Rgb(0x423C35);
constexpr Color knobTop = Color::Rgb(0x575047);
constexpr Color knobLit = Color::Rgb(0x6E655A);
constexpr Color accent = Color::Rgb(0xD7601C);
constexpr Color glow = Color::Rgb(0xF39140);
constexpr Color xlfo = Color::Rgb(0x18867C);
constexpr Color eg = Color::Rgb(0x7052A0);
constexpr Color ef = Color::Rgb(0x61851C);
constexpr Color midi = Color::Rgb(0x2A6DB4);
constexpr Color midiLit = Color::Rgb(0x73B7F3);
constexpr Color xy = Color::Rgb(0xB83A6A);
constexpr Color white = Color::White();
constexpr Color black = Color::Black();
}  // namespace Palette

}  // namespace gui
