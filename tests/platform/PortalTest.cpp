#include "EditorFixture.h"
#include "FakePortal.h"
#include "gui/FileDialogs.h"
#include "platform/PortalFileChooser.h"
#include "support/TemporaryFolder.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>

namespace {

using namespace gui;
using PortalTest = EditorFixture;

TEST_F(PortalTest, TheDesktopsDialogIsAskedProperly)
{
    Open();
    FakePortal portal(FakePortal::Behaviour::Chooses, "file:///tmp/my%20preset");
    ASSERT_TRUE(portal.IsRunning()) << "dbus-daemon doesn't start";
    const auto dialog = ui->Platform().CreateOpenSaveDialog();
    dialog->DialogKind.assign(OpenSaveDialog::Kind::Save);
    dialog->Title.assign("Save");
    dialog->Filter.assign("Presets|*.mvp|All|*.*");
    dialog->InitialFolder.assign("/tmp");
    dialog->FileName.assign("proposed.mvp");
    dialog->DefaultExtension.assign("mvp");
    RootControl::Entry entry(ui->GetRootControl());
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(dialog->FileName.value(), "/tmp/my preset.mvp");
    EXPECT_EQ(portal.method, "SaveFile");
    char window[32];
    std::snprintf(window, sizeof window, "x11:%x", host->Window());
    EXPECT_EQ(portal.window, window);
    EXPECT_EQ(portal.title, "Save");
    EXPECT_EQ(portal.name, "proposed.mvp");
    EXPECT_EQ(portal.folder, std::string("/tmp\0", 5));
    EXPECT_EQ(portal.firstPattern, "*.mvp");

    // Names of files may be anything, and the bus takes only text.
    dialog->FileName.assign("caf\xE9.mvp");
    EXPECT_TRUE(dialog->Show());
    EXPECT_EQ(portal.name, "caf");

    const auto folder = ui->Platform().CreateSelectFolderDialog();
    EXPECT_TRUE(folder->Show());
    EXPECT_EQ(folder->Folder.value(), "/tmp/my preset");
    EXPECT_EQ(portal.method, "OpenFile");
    EXPECT_TRUE(portal.directory);
}

TEST_F(PortalTest, WithoutAChoiceThereIsNone)
{
    using Result = PortalFileChooser::Result;
    struct Row {
        FakePortal::Behaviour behaviour;
        Result result;
    };
    Open();
    RootControl::Entry entry(ui->GetRootControl());
    for (const Row& row : {Row{FakePortal::Behaviour::Cancels, Result::Cancelled},
                           Row{FakePortal::Behaviour::Refuses, Result::Unavailable},
                           Row{FakePortal::Behaviour::Vanishes, Result::Cancelled}}) {
        FakePortal portal(row.behaviour, "");
        ASSERT_TRUE(portal.IsRunning());
        std::string path;
        EXPECT_EQ(PortalFileChooser(*ui).Run({}, path), row.result);
        EXPECT_EQ(path, "");
    }
    std::string path;
    EXPECT_EQ(PortalFileChooser(*ui).Run({}, path), Result::Unavailable) << "no bus at all";
}

TEST_F(PortalTest, ABusThatDoesntAnswerIsSoonGivenUp)
{
    Open();
    const TemporaryFolder folder;
    const std::string path = (folder / "bus").string();
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socketOfBus = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(socketOfBus, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(socketOfBus, 4), 0);
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1);
    int ticks = 0;
    ui->OnTick.setHandler(NotifyEvent::handler([&](void*) { ++ticks; }));
    RootControl::Entry entry(ui->GetRootControl());
    std::string chosen;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(PortalFileChooser(*ui).Run({}, chosen), PortalFileChooser::Result::Unavailable);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_GT(ticks, 3) << "the editor lives on meanwhile";
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    close(socketOfBus);
}

}  // namespace
