#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace gui {

class X11Connection;

/// What the user set for all programs: how large letters are, and what a double-click is. A desktop tells by
/// its settings manager; a plain window manager leaves it to the display's resources.
class X11DesktopSettings {
public:
    /// Reads what the desktop says now; its later changes come as events of the connection. Thread: main.
    static X11DesktopSettings Read(X11Connection& connection);

    /// The numbers of a settings manager's property; those of other kinds are left out. Damaged data gives
    /// what stands before the damage.
    static std::map<std::string, int> ParseManager(std::string_view bytes);
    /// The value of "name: value" among the lines of a resource text.
    static std::optional<float> FindResource(std::string_view text, std::string_view name);

    /// Device pixels per logical unit that the letters' size asks for; none if nobody set it.
    std::optional<float> fontScale;
    int doubleClickMs = 400;
    int doubleClickPixels = 5;
};

}  // namespace gui
