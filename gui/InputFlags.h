#pragma once

namespace gui {

/// What is held while an input event happens: bits of the `flags` of every event.
namespace InputFlags {
constexpr int shift = 1;
constexpr int alt = 2;
constexpr int ctrl = 4;
constexpr int leftButton = 8;
constexpr int rightButton = 16;
constexpr int middleButton = 32;
constexpr int doubleClick = 64;
constexpr int secondaryClick = 128;  // a platform's modifier that turns a left press into a right one
constexpr int systemKey = 256;       // the key with the desktop's sign
constexpr int synthetic = 512;       // a move that precedes a press or a release
constexpr int keyboardMask = 0x187;  // the modifiers of the keyboard
}  // namespace InputFlags

namespace MouseButton {
constexpr int left = 0;
constexpr int right = 1;
constexpr int middle = 2;
}  // namespace MouseButton

namespace KeyCode {
constexpr int character = 1;  // the code point comes beside it
constexpr int up = 2;
constexpr int down = 3;
constexpr int left = 4;
constexpr int right = 5;
constexpr int deleteKey = 6;
constexpr int home = 7;
constexpr int end = 8;
constexpr int escape = 9;
}  // namespace KeyCode

}  // namespace gui
