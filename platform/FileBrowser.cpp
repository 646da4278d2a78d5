#include "platform/FileBrowser.h"

#include "foundation/TextCompare.h"
#include "platform/X11Control.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace gui {

namespace {

// Logical units.
constexpr Point size{520.0f, 400.0f};
constexpr float margin = 12.0f;
constexpr float lineHeight = 24.0f;
constexpr Point buttonSize{84.0f, 26.0f};
constexpr char parentFolder[] = "..";

const char* acceptLabel(FileRequest::Kind kind)
{
    switch (kind) {
    case FileRequest::Kind::SaveFile:
        return "Save";
    case FileRequest::Kind::SelectFolder:
        return "Select";
    default:
        return "Open";
    }
}

std::string startFolder(const FileRequest& request)
{
    std::error_code error;
    if (!request.folder.empty() && std::filesystem::is_directory(request.folder, error))
        return request.folder;
    const char* home = std::getenv("HOME");
    return home && *home ? home : "/";
}

std::vector<DialogList::Entry> readFolder(const std::string& folder, const FileRequest& request)
{
    std::vector<DialogList::Entry> entries;
    std::error_code error;
    std::filesystem::directory_iterator each(folder, error), end;
    for (; !error && each != end; each.increment(error)) {
        std::error_code unknown;
        const std::string name = each->path().filename().string();
        const bool isFolder = each->is_directory(unknown);
        const bool fits = request.filters.empty() || FileRequest::Matches(request.filters.front(), name);
        const bool wanted = isFolder || (request.kind != FileRequest::Kind::SelectFolder && fits);
        if (!name.starts_with('.') && wanted)
            entries.push_back({name, isFolder});
    }
    std::sort(entries.begin(), entries.end(), [](const DialogList::Entry& a, const DialogList::Entry& b) {
        if (a.isFolder != b.isFolder)
            return a.isFolder;
        const int order = compareNatural(a.text, b.text);
        return order != 0 ? order < 0 : a.text < b.text;
    });
    if (folder != "/")
        entries.insert(entries.begin(), {parentFolder, true});
    return entries;
}

}  // namespace

FileBrowser::FileBrowser(X11Interface& editor, const FileRequest& fileRequest)
    : request(fileRequest), dialog(editor, size, fileRequest.title)
{
    if (!dialog.IsOpen())
        return;
    X11Interface& ui = dialog.Ui();
    Control* root = &ui.Window();
    const bool saves = request.kind == FileRequest::Kind::SaveFile;
    const float buttonsTop = size.y - margin - buttonSize.y;
    const float listBottom = buttonsTop - margin - (saves ? lineHeight + margin : 0.0f);
    list = std::make_unique<DialogList>(ui, root);
    const float listTop = margin + lineHeight;
    list->SetBounds(margin, listTop, size.x - 2.0f * margin, listBottom - listTop);
    list->OnSelected = [this](int index) { Selected(index); };
    list->OnOpened = [this](int index) { Opened(index); };
    accept = std::make_unique<DialogButton>(ui, root, acceptLabel(request.kind), [this] { Accept(); });
    cancel = std::make_unique<DialogButton>(ui, root, "Cancel", [this] { dialog.End(false); });
    float x = size.x - margin - buttonSize.x;
    cancel->SetBounds(x, buttonsTop, buttonSize.x, buttonSize.y);
    x -= buttonSize.x + margin * 0.5f;
    accept->SetBounds(x, buttonsTop, buttonSize.x, buttonSize.y);
    accept->SetDefault(true);
    dialog.OnKey = [this](const X11Key& key) { return TakeKey(key); };
    OpenFolder(startFolder(request));
    if (!saves)
        return;
    name = std::make_unique<X11TextEditor>(ui);
    name->SetStaysOpen(true);
    name->OnReturn.setHandler(NotifyEvent::handler([this](void*) { Accept(); }));
    name->OnEscape.setHandler(NotifyEvent::handler([this](void*) { dialog.End(false); }));
    name->Open(request.name, {margin, listBottom + margin * 0.5f, size.x - margin,
                              listBottom + margin * 0.5f + lineHeight});
}

FileBrowser::~FileBrowser() = default;

bool FileBrowser::Run(std::string& path)
{
    if (!dialog.IsOpen() || !dialog.Run())
        return false;
    path = request.WithExtension(chosen);
    return true;
}

void FileBrowser::OpenFolder(const std::string& wanted)
{
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(wanted, error);
    folder = error ? wanted : real.string();
    if (!folder.ends_with('/'))
        folder += '/';
    ShowFolder();
}

void FileBrowser::ShowFolder()
{
    location = std::make_unique<DialogText>(dialog.Ui(), &dialog.Ui().Window(), folder, 0.0f);
    location->SetPosition({margin, margin});
    list->SetEntries(readFolder(folder, request));
}

void FileBrowser::Selected(int index)
{
    const DialogList::Entry& entry = list->Entries()[static_cast<std::size_t>(index)];
    if (name && !entry.isFolder)
        name->SetText(entry.text);
}

void FileBrowser::Opened(int index)
{
    const DialogList::Entry entry = list->Entries()[static_cast<std::size_t>(index)];
    if (entry.isFolder)
        OpenFolder(folder + entry.text);
    else
        Choose(entry.text);
}

void FileBrowser::Accept()
{
    if (name) {
        Choose(name->GetText());
        return;
    }
    const int index = list->Selected();
    const bool selectsFolder = request.kind == FileRequest::Kind::SelectFolder;
    if (!selectsFolder && index >= 0)
        Opened(index);
    else if (selectsFolder)
        Choose(index >= 0 ? list->Entries()[static_cast<std::size_t>(index)].text : std::string());
}

bool FileBrowser::Choose(const std::string& typed)
{
    const bool selectsFolder = request.kind == FileRequest::Kind::SelectFolder;
    if (typed.empty() && !selectsFolder)
        return false;
    const std::string path = typed.starts_with('/') ? typed : folder + typed;
    std::error_code error;
    // A folder's name opens it, unless folders are what is asked for.
    if (!selectsFolder && std::filesystem::is_directory(path, error)) {
        OpenFolder(path);
        return false;
    }
    chosen = selectsFolder ? std::filesystem::path(path).lexically_normal().string() : path;
    while (chosen.size() > 1 && chosen.ends_with('/'))
        chosen.pop_back();
    dialog.End(true);
    return true;
}

bool FileBrowser::TakeKey(const X11Key& key)
{
    switch (key.symbol) {
    case XKB_KEY_Up:
        list->Select(std::max(list->Selected() - 1, 0));
        return true;
    case XKB_KEY_Down:
        list->Select(list->Selected() + 1);
        return true;
    case XKB_KEY_Home:
        list->Select(0);
        return true;
    case XKB_KEY_End:
        list->Select(static_cast<int>(list->Entries().size()) - 1);
        return true;
    case XKB_KEY_BackSpace:
        OpenFolder(folder + parentFolder);
        return true;
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
        Accept();
        return true;
    default:
        return false;
    }
}

}  // namespace gui
