#pragma once

#include "gui/InputFlags.h"

#include <array>
#include <utility>

namespace gui {

/// What the modifier keys do to value controls.
namespace ModifierActions {

constexpr int reset = 1;  // to the default value
constexpr int fine = 2;
constexpr int group = 4;  // moves the linked controls too

/// The keys that count, of an event's flags.
constexpr int mask = InputFlags::shift | InputFlags::alt | InputFlags::ctrl | InputFlags::secondaryClick;

constexpr std::array<std::pair<int, int>, 5> table{{
    {InputFlags::ctrl, reset},
    {InputFlags::shift, fine},
    {InputFlags::alt, group},
    {InputFlags::shift | InputFlags::alt, fine | group},
    {InputFlags::alt | InputFlags::ctrl, reset | group},
}};

/// The actions of an event's flags; 0 for a combination that has none.
constexpr int Get(int inputFlags) noexcept
{
    for (const auto& [keys, actions] : table)
        if (keys == (inputFlags & mask))
            return actions;
    return 0;
}

/// The keys that give exactly these actions; 0 if none do.
constexpr int KeysOf(int wanted) noexcept
{
    for (const auto& [keys, actions] : table)
        if (actions == wanted)
            return keys;
    return 0;
}

}  // namespace ModifierActions
}  // namespace gui
