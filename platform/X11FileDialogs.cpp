#include "platform/X11FileDialogs.h"

#include "platform/FileBrowser.h"
#include "platform/PipeSignalGuard.h"
#include "platform/PortalFileChooser.h"

namespace gui {

namespace {

/// True if `path` was chosen.
bool ask(X11Interface& owner, const FileRequest& request, std::string& path)
{
    if (!owner.IsMainThread() || owner.IsWindowLost())
        return false;
    const PipeSignalGuard guard;
    PortalFileChooser portal(owner);
    const PortalFileChooser::Result result = portal.Run(request, path);
    if (result != PortalFileChooser::Result::Unavailable)
        return result == PortalFileChooser::Result::Chosen;
    return FileBrowser(owner, request).Run(path);
}

}  // namespace

X11OpenSaveDialog::X11OpenSaveDialog(X11Interface& ui) : OpenSaveDialog(ui), interface(ui) {}

bool X11OpenSaveDialog::Show()
{
    const bool saves = DialogKind.value() == Kind::Save;
    FileRequest request;
    request.kind = saves ? FileRequest::Kind::SaveFile : FileRequest::Kind::OpenFile;
    request.title = Title.value().empty() ? (saves ? "Save" : "Open") : Title.value();
    request.folder = InitialFolder.value();
    const std::string proposed = FileName.value();
    const std::size_t slash = proposed.rfind('/');
    request.name = slash == std::string::npos ? proposed : proposed.substr(slash + 1);
    if (request.folder.empty() && slash != std::string::npos)
        request.folder = proposed.substr(0, slash + 1);
    request.defaultExtension = DefaultExtension.value();
    request.filters = FileRequest::ParseFilters(Filter.value());
    const std::shared_ptr<const bool> alive = interface.Liveness();
    std::string path;
    if (!ask(interface, request, path) || !*alive)
        return false;
    FileName.assign(request.WithExtension(path));
    return true;
}

X11SelectFolderDialog::X11SelectFolderDialog(X11Interface& ui) : SelectFolderDialog(ui), interface(ui) {}

bool X11SelectFolderDialog::Show()
{
    FileRequest request;
    request.kind = FileRequest::Kind::SelectFolder;
    request.title = Title.value();
    request.folder = Folder.value();
    const std::shared_ptr<const bool> alive = interface.Liveness();
    std::string path;
    if (!ask(interface, request, path) || !*alive)
        return false;
    Folder.assign(path);
    return true;
}

}  // namespace gui
