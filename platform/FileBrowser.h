#pragma once

#include "platform/DialogControls.h"
#include "platform/FileRequest.h"
#include "platform/FolderReading.h"
#include "platform/X11Dialog.h"
#include "platform/X11TextEditor.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace gui {

class Timer;

/// Our own file dialog, for desktops that offer none. A folder that doesn't answer holds up neither the
/// dialog nor the editor: one can go elsewhere meanwhile. Thread: main.
class FileBrowser {
public:
    FileBrowser(X11Interface& editor, const FileRequest& fileRequest,
                std::shared_ptr<const FolderLister> folderLister = std::make_shared<FolderLister>());
    ~FileBrowser();

    /// Runs until it is answered, with the root's lock freed. True if `path` was chosen.
    bool Run(std::string& path);

private:
    void AddControls();
    void AddNameField(const Rect& rect);
    /// @param choice  a name in it to choose as soon as it is there; empty for none
    void OpenFolder(const std::string& wanted, const std::string& choice = {});
    void OpenNextStart();
    void FollowReading();
    void ReadingEnded(FolderReading::State state);
    void ShowEntries();
    void ShowLine(const std::string& line);
    void ShowFilters();
    void Selected(int index);
    void Opened(int index);
    void Accept();
    void Choose(const std::string& typed);
    void ChooseHere(const std::string& name);
    void End(const std::string& path);
    bool TakeKey(const X11Key& key);
    const FolderReading::Entry* Find(const std::string& name) const;

    const FileRequest& request;
    const std::shared_ptr<const FolderLister> lister;
    X11Dialog dialog;
    std::vector<std::string> starts;  // folders to begin in, the best one last
    std::string folder;               // with the separator at its end
    std::unique_ptr<FolderReading> reading;
    std::unique_ptr<Timer> timer;               // looks how far the reading is
    bool isShown = false;                       // the folder in hand, as far as it is known
    std::vector<FolderReading::Entry> entries;  // all, in order
    std::size_t filter = 0;
    std::deque<X11Key> typedAhead;  // before the folder was there
    std::string goal;               // what to choose once it is there
    std::unique_ptr<DialogText> line;
    std::unique_ptr<DialogList> list;
    std::unique_ptr<DialogButton> accept;
    std::unique_ptr<DialogButton> cancel;
    std::unique_ptr<DialogButton> filters;
    std::unique_ptr<Control> nameFrame;
    std::unique_ptr<X11TextEditor> name;  // to save at
    std::string chosen;
};

}  // namespace gui
