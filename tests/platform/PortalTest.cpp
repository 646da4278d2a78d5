#include "EditorFixture.h"
#include "FakePortal.h"
#include "gui/FileDialogs.h"
#include "platform/PortalFileChooser.h"

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

}  // namespace
