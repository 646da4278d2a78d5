#pragma once

#include <string>

#include <sys/types.h>

/// An X display without a screen to look at, for this process: it stands in the environment while it exists.
/// A test that needs one fails where it can't be started.
class VirtualDisplay {
public:
    /// @param without  an extension that it is to lack, or null
    explicit VirtualDisplay(const char* screen = "800x600x24", const char* without = nullptr);
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    bool IsRunning() const { return process > 0; }
    const std::string& Name() const { return name; }
    /// Ends the display under those who use it.
    void Kill();

private:
    pid_t process = -1;
    std::string name;
};
