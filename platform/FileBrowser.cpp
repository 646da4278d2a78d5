#include "platform/FileBrowser.h"

#include "foundation/TextCompare.h"
#include "gui/Menu.h"
#include "gui/PopupMenu.h"
#include "gui/Timer.h"
#include "platform/DialogStyle.h"
#include "platform/X11Control.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace gui {

namespace {

// Logical units.
constexpr Point browserSize{520.0f, 400.0f};
constexpr float margin = 12.0f;
constexpr float lineHeight = 24.0f;
constexpr Point buttonSize{84.0f, 26.0f};
constexpr char parentFolder[] = "..";
constexpr int followMs = 20;
// Most folders are there by then, and show without a flicker.
constexpr std::chrono::milliseconds patience{40};

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

std::string homeFolder()
{
    const char* home = std::getenv("HOME");
    return home && *home ? home : "/";
}

bool stands(const FolderReading::Entry& a, const FolderReading::Entry& b)
{
    if (a.isFolder != b.isFolder)
        return a.isFolder;
    const int order = compareNatural(a.name, b.name);
    return order != 0 ? order < 0 : a.name < b.name;
}

}  // namespace

FileBrowser::FileBrowser(X11Interface& editor, const FileRequest& fileRequest,
                         std::shared_ptr<const FolderLister> folderLister)
    : request(fileRequest),
      lister(std::move(folderLister)),
      dialog(editor, browserSize, fileRequest.title),
      starts{"/", homeFolder()}
{
    if (!dialog.IsOpen())
        return;
    if (!request.folder.empty())
        starts.push_back(request.folder);
    AddControls();
    timer = dialog.Ui().CreateTimer();
    timer->Interval.assign(followMs);
    timer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) { FollowReading(); }));
    dialog.OnKey = [this](const X11Key& key) { return TakeKey(key); };
    OpenNextStart();
}

FileBrowser::~FileBrowser() = default;

void FileBrowser::AddControls()
{
    X11Interface& ui = dialog.Ui();
    Control* root = &ui.Window();
    const bool saves = request.kind == FileRequest::Kind::SaveFile;
    const float buttonsTop = browserSize.y - margin - buttonSize.y;
    const float listBottom = buttonsTop - margin - (saves ? lineHeight + margin : 0.0f);
    const float listTop = margin + lineHeight;
    list = std::make_unique<DialogList>(ui, root);
    list->SetBounds(margin, listTop, browserSize.x - 2.0f * margin, listBottom - listTop);
    list->OnSelected = [this](int index) { Selected(index); };
    list->OnOpened = [this](int index) {
        typedAhead.clear();
        Opened(index);
    };
    accept = std::make_unique<DialogButton>(ui, root, acceptLabel(request.kind), [this] { Accept(); });
    cancel = std::make_unique<DialogButton>(ui, root, "Cancel", [this] { dialog.End(false); });
    float x = browserSize.x - margin - buttonSize.x;
    cancel->SetBounds(x, buttonsTop, buttonSize.x, buttonSize.y);
    x -= buttonSize.x + margin * 0.5f;
    accept->SetBounds(x, buttonsTop, buttonSize.x, buttonSize.y);
    accept->SetDefault(true);
    if (request.filters.size() > 1) {
        filters =
            std::make_unique<DialogButton>(ui, root, request.filters.front().name, [this] { ShowFilters(); });
        filters->SetBounds(margin, buttonsTop, x - 3.0f * margin, buttonSize.y);
        filters->SetShowsChoice(true);
    }
    if (saves)
        AddNameField(Rect::At({margin, listBottom + margin}, {browserSize.x - 2.0f * margin, lineHeight}));
}

void FileBrowser::AddNameField(const Rect& rect)
{
    nameFrame = std::make_unique<Control>(dialog.Ui(), &dialog.Ui().Window());
    nameFrame->BackgroundColor.assign(DialogStyle::border);
    nameFrame->SetBounds(rect.left, rect.top, rect.Width(), rect.Height());
    name = std::make_unique<X11TextEditor>(dialog.Ui());
    name->SetStaysOpen(true);
    name->OnReturn.setHandler(NotifyEvent::handler([this](void*) { Accept(); }));
    name->OnEscape.setHandler(NotifyEvent::handler([this](void*) { dialog.End(false); }));
    name->Open(request.name, rect.Inset(1.0f));
}

bool FileBrowser::Run(std::string& path)
{
    if (!dialog.IsOpen() || !dialog.Run())
        return false;
    path = chosen;
    return true;
}

// The folder in hand

void FileBrowser::OpenNextStart()
{
    const std::string next = starts.back();
    starts.pop_back();
    OpenFolder(next);
}

void FileBrowser::OpenFolder(const std::string& wanted, const std::string& choice)
{
    // By the letters alone: to ask the file system might take minutes.
    folder = std::filesystem::path(wanted).lexically_normal().string();
    if (!folder.ends_with('/'))
        folder += '/';
    isShown = false;
    goal = choice;
    entries.clear();
    list->SetEntries({});
    ShowLine(folder);
    reading = std::make_unique<FolderReading>(folder, lister);
    reading->WaitFor(patience);
    timer->Running.assign(true);
    ShowEntries();
    FollowReading();
}

void FileBrowser::FollowReading()
{
    const FolderReading::State state = reading->Now();
    if (state == FolderReading::State::Waiting)
        return;
    isShown = true;
    const std::size_t known = entries.size();
    entries = reading->Entries();
    std::sort(entries.begin(), entries.end(), stands);
    if (entries.size() != known)
        ShowEntries();
    if (state != FolderReading::State::Linking)
        ReadingEnded(state);
    // Each may open another folder, for which the rest then waits.
    while (isShown && !typedAhead.empty()) {
        const X11Key key = std::move(typedAhead.front());
        typedAhead.pop_front();
        TakeKey(key);
    }
}

void FileBrowser::ReadingEnded(FolderReading::State state)
{
    timer->Running.assign(false);
    const std::string wanted = std::exchange(goal, {});
    if (state == FolderReading::State::Done) {
        starts.clear();
        if (!wanted.empty())
            ChooseHere(wanted);
    } else if (!starts.empty()) {
        OpenNextStart();
    } else {
        ShowLine(folder + " can't be read");
    }
}

void FileBrowser::ShowEntries()
{
    std::vector<DialogList::Entry> shown;
    if (folder != "/")
        shown.push_back({parentFolder, true});
    for (const FolderReading::Entry& entry : entries) {
        const bool fits =
            request.filters.empty() || FileRequest::Matches(request.filters[filter], entry.name);
        if (entry.isFolder || (request.kind != FileRequest::Kind::SelectFolder && fits))
            shown.push_back({entry.name, entry.isFolder});
    }
    list->SetEntries(std::move(shown));
}

void FileBrowser::ShowLine(const std::string& text)
{
    const auto show = [this](const std::string& shown) {
        line = std::make_unique<DialogText>(dialog.Ui(), &dialog.Ui().Window(), shown, 0.0f);
        line->SetPosition({margin, margin});
    };
    show(text);
    // The end of a long path says more than its beginning.
    constexpr float room = browserSize.x - 2.0f * margin;
    for (std::size_t slash = text.find('/', 1); line->GetWidth() > room && slash != std::string::npos;
         slash = text.find('/', slash + 1))
        show("\xE2\x80\xA6" + text.substr(slash));
}

void FileBrowser::ShowFilters()
{
    Menu menu;
    for (const FileRequest::Filter& each : request.filters)
        menu.AddItem(each.name);
    menu.GetItem(static_cast<int>(filter))->Checked.assign(true);
    const auto popup = dialog.Ui().Platform().CreatePopupMenu();
    const MenuItem* const wanted = popup->Show(menu, Rect::At(filters->ToRoot({}), filters->GetSize()));
    for (std::size_t i = 0; wanted && i < request.filters.size(); ++i)
        if (menu.GetItem(static_cast<int>(i)) == wanted)
            filter = i;
    filters->SetLabel(request.filters[filter].name);
    ShowEntries();
}

// The choice

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
    if (name)
        return Choose(name->GetText());
    const int index = list->Selected();
    const bool selectsFolder = request.kind == FileRequest::Kind::SelectFolder;
    if (!selectsFolder && index >= 0)
        Opened(index);
    else if (selectsFolder)
        Choose(index >= 0 ? list->Entries()[static_cast<std::size_t>(index)].text : std::string());
}

void FileBrowser::Choose(const std::string& typed)
{
    const std::filesystem::path path = (std::filesystem::path(folder) / typed).lexically_normal();
    if (request.kind == FileRequest::Kind::SelectFolder)
        return End(path.string());
    if (typed.empty())
        return;
    if (!path.has_filename())
        return OpenFolder(path.string());
    std::string parent = path.parent_path().string();
    if (!parent.ends_with('/'))
        parent += '/';
    if (parent != folder)
        OpenFolder(parent, path.filename().string());
    else if (isShown)
        ChooseHere(path.filename().string());
    else
        goal = path.filename().string();
}

void FileBrowser::ChooseHere(const std::string& wanted)
{
    const FolderReading::Entry* const entry = Find(wanted);
    // A folder's name opens it.
    if (entry && entry->isFolder)
        return OpenFolder(folder + wanted);
    End(request.WithExtension(folder + wanted));
}

const FolderReading::Entry* FileBrowser::Find(const std::string& wanted) const
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&wanted](const auto& entry) { return entry.name == wanted; });
    return found != entries.end() ? &*found : nullptr;
}

void FileBrowser::End(const std::string& path)
{
    chosen = path;
    while (chosen.size() > 1 && chosen.ends_with('/'))
        chosen.pop_back();
    dialog.End(true);
}

bool FileBrowser::TakeKey(const X11Key& key)
{
    if (key.symbol == XKB_KEY_Escape)
        return false;
    if (key.symbol == XKB_KEY_BackSpace) {
        typedAhead.clear();
        OpenFolder(folder + parentFolder);
        return true;
    }
    if (!isShown) {
        typedAhead.push_back(key);
        return true;
    }
    switch (key.symbol) {
    case XKB_KEY_Up:
        list->Select(std::max(list->Selected() - 1, 0));
        return true;
    case XKB_KEY_Down:
        list->Select(list->Selected() + 1);
        return true;
    case XKB_KEY_Prior:
        list->Select(std::max(list->Selected() - list->RowsPerPage(), 0));
        return true;
    case XKB_KEY_Next:
        list->Select(list->Selected() + list->RowsPerPage());
        return true;
    case XKB_KEY_Home:
        list->Select(0);
        return true;
    case XKB_KEY_End:
        list->Select(static_cast<int>(list->Entries().size()) - 1);
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
