#pragma once

#include <string>

namespace gui {

class X11Interface;

/// A text with a button or two.
class X11MessageBox {
public:
    /// @param flags  of `PlatformDelegate::MessageButton`
    /// Runs until it is answered, with the root's lock freed. True if the answer was OK. Thread: main.
    static bool Show(X11Interface& owner, const std::string& text, int flags);
};

}  // namespace gui
