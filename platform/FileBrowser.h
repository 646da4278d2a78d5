#pragma once

#include "platform/DialogControls.h"
#include "platform/FileRequest.h"
#include "platform/X11Dialog.h"
#include "platform/X11TextEditor.h"

#include <memory>
#include <string>

namespace gui {

/// Our own file dialog, for desktops that offer none. Thread: main.
class FileBrowser {
public:
    FileBrowser(X11Interface& editor, const FileRequest& fileRequest);
    ~FileBrowser();

    /// Runs until it is answered, with the root's lock freed. True if `path` was chosen.
    bool Run(std::string& path);

private:
    void OpenFolder(const std::string& wanted);
    void ShowFolder();
    void Selected(int index);
    void Opened(int index);
    void Accept();
    bool TakeKey(const X11Key& key);
    bool Choose(const std::string& name);

    const FileRequest& request;
    X11Dialog dialog;
    std::string folder;  // with the separator at its end
    std::unique_ptr<DialogText> location;
    std::unique_ptr<DialogList> list;
    std::unique_ptr<DialogButton> accept;
    std::unique_ptr<DialogButton> cancel;
    std::unique_ptr<X11TextEditor> name;  // to save at
    std::string chosen;
};

}  // namespace gui
