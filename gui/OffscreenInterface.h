#pragma once

#include "gui/Bitmap.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gui {

/// An interface without a window, on a clock that only moves when it is told to: for pictures of it and for
/// tests. Thread: one, which counts as the main thread.
class OffscreenInterface : public UserInterface {
public:
    /// @param size   of the root, logical units
    /// @param scale  brought to the nearest of the backing's levels
    explicit OffscreenInterface(std::unique_ptr<gui::PlatformDelegate> platformDelegate, Point size,
                                float scale = 1.0f);
    ~OffscreenInterface() override;

    std::unique_ptr<Timer> CreateTimer() override;
    std::uintptr_t GetPlatformWindow() const override { return 0; }
    RootControl& GetRootControl() override { return *root; }
    bool IsActive() const override { return true; }

    /// Lets time go by in steps of a millisecond: timers fire in the order in which they are due, and the
    /// interface ticks each 10 ms. The interface may be gone when it returns.
    void AdvanceTime(std::uint32_t milliseconds);
    /// The clock of all offscreen interfaces, milliseconds.
    static std::uint32_t VirtualTickMs() noexcept;

    /// Paints what is to be repainted, and nothing else. False if there was nothing.
    bool Paint();
    /// What has been painted so far.
    const Bitmap& Picture() const { return picture; }

    // What a window system would tell.
    void SetCursorOutside(bool outside) { cursorOutside = outside; }
    /// Flags of the keyboard, which the next tick sees.
    void SetModifiers(int keyboardFlags) { modifiers = keyboardFlags; }

protected:
    void PollModifiers() override { root->WindowModifiers(modifiers); }
    bool IsCursorOutside() const override { return cursorOutside; }

private:
    class OffscreenRoot;
    class OffscreenTimer;

    OffscreenTimer* NextDue() const;
    void FireDueTimers();

    std::vector<OffscreenTimer*> runningTimers;  // in the order of their starts
    Bitmap picture{Backing()};
    std::unique_ptr<RootControl> root;
    std::uint32_t millisecondsToTick;
    int modifiers = 0;
    bool cursorOutside = false;
};

}  // namespace gui
