#pragma once

#include "gui/FileDialogs.h"
#include "platform/FileRequest.h"

namespace gui {

class X11Interface;

/// The desktop's dialog where it has one, else our own.
class X11OpenSaveDialog : public OpenSaveDialog {
public:
    explicit X11OpenSaveDialog(X11Interface& ui);
    bool Show() override;

private:
    X11Interface& interface;
};

/// The same for folders.
class X11SelectFolderDialog : public SelectFolderDialog {
public:
    explicit X11SelectFolderDialog(X11Interface& ui);
    bool Show() override;

private:
    X11Interface& interface;
};

}  // namespace gui
