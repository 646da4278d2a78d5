#include "EditorFixture.h"
#include "gui/FileDialogs.h"
#include "platform/FileBrowser.h"
#include "platform/FileRequest.h"
#include "support/TemporaryFolder.h"
#include "support/TemporaryHome.h"

#include <xkbcommon/xkbcommon.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <thread>

namespace {

using namespace gui;

class DialogTest : public EditorFixture {
protected:
    void SetUp() override
    {
        EditorFixture::SetUp();
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        unsetenv("XDG_RUNTIME_DIR");
        Open();
    }

    /// Runs `show` while another thread acts on the window that it opens.
    void Answer(const std::function<void()>& show, const std::function<void(xcb_window_t)>& acts)
    {
        std::thread hand([&] {
            EXPECT_TRUE(TestHost::Wait([&] {
                const auto tops = host->TopWindows();
                return tops.size() == 1 && host->FocusOwner() == tops[0];
            }));
            const auto tops = host->TopWindows();
            if (!tops.empty())
                acts(tops[0]);
        });
        {
            RootControl::Entry entry(ui->GetRootControl());
            show();
        }
        hand.join();
        EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().empty(); }));
    }
    void Press(std::initializer_list<std::uint32_t> keys)
    {
        for (const std::uint32_t key : keys)
            host->Type(key);
    }
    void Type(const std::string& text)
    {
        for (const char c : text)
            host->Type(static_cast<unsigned char>(c));
    }
};

TEST_F(DialogTest, AMessageIsAnsweredByKeysAndMouse)
{
    using MessageButton = PlatformDelegate::MessageButton;
    constexpr int both = MessageButton::ok | MessageButton::cancel;
    struct Row {
        int flags;
        std::uint32_t key;
        const char* title;
        bool confirmed;
    };
    for (const Row& row : {Row{MessageButton::ok, XKB_KEY_Return, "Information", true},
                           Row{both, XKB_KEY_Return, "Confirmation", true},
                           Row{both, XKB_KEY_Escape, "Confirmation", false}}) {
        bool confirmed = false;
        Answer(
            [&] {
                ui->Platform().ShowMessageBox("One line\n\nand another", row.flags,
                                              [&] { confirmed = true; });
            },
            [&](xcb_window_t window) {
                EXPECT_EQ(host->Property(window, "_NET_WM_NAME"), row.title);
                EXPECT_FALSE(host->Property(window, "WM_TRANSIENT_FOR").empty());
                host->Click(150, 100);  // the editor lies dead
                host->Type(row.key);
            });
        EXPECT_EQ(confirmed, row.confirmed);
        EXPECT_FALSE(control->Has("down"));
    }
    bool confirmed = false;
    Answer([&] { ui->Platform().ShowMessageBox("Sure?", both, [&] { confirmed = true; }); },
           [&](xcb_window_t window) {
               const auto place = host->Geometry(window);
               // OK stands left of Cancel, at the lower right.
               host->Click(place[0] + place[2] - 150, place[1] + place[3] - 29);
           });
    EXPECT_TRUE(confirmed);
}

TEST_F(DialogTest, OtherEditorsGoOnButTakeNoInput)
{
    TestLoop otherLoop;
    X11Interface::Options options;
    options.parent = host->Window();
    options.size = {50.0f, 50.0f};
    const auto other = X11Interface::Open(otherLoop, options);
    ASSERT_TRUE(other);
    RecordingControl inside(*other, &other->GetRootControl());
    inside.SetSize(options.size);
    std::atomic<int> ticks = 0;
    other->OnTick.setHandler(NotifyEvent::handler([&](void*) { ++ticks; }));
    Answer([&] { ui->Platform().ShowMessageBox("Text", 1, {}); },
           [&](xcb_window_t) {
               host->Click(110, 60);
               EXPECT_TRUE(TestHost::Wait([&] { return ticks > 3; }));
               host->Type(XKB_KEY_Escape);
           });
    otherLoop.RunFor(30);
    EXPECT_FALSE(inside.Has("down"));
    host->Click(110, 60);
    EXPECT_TRUE(otherLoop.RunUntil([&] { return inside.Has("down"); }));
}

TEST_F(DialogTest, OurOwnBrowserOpensSavesAndSelects)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "").string();
    std::filesystem::create_directory(path + "/inner");
    for (const char* name : {"/b.mvp", "/a.txt", "/inner/c.mvp"})
        std::ofstream(path + name) << "x";
    const auto dialog = ui->Platform().CreateOpenSaveDialog();
    dialog->Filter.assign("Presets (*.mvp)|*.mvp|All Files (*.*)|*.*");
    dialog->InitialFolder.assign(path);
    bool shown = false;
    // "..", "inner", "b.mvp": other files aren't listed.
    Answer([&] { shown = dialog->Show(); },
           [&](xcb_window_t) {
               for (const std::uint32_t key : {XKB_KEY_End, XKB_KEY_Return})
                   host->Type(key);
           });
    EXPECT_TRUE(shown);
    EXPECT_EQ(std::filesystem::canonical(dialog->FileName.value()),
              std::filesystem::canonical(path + "/b.mvp"));

    dialog->DialogKind.assign(OpenSaveDialog::Kind::Save);
    dialog->DefaultExtension.assign("mvp");
    dialog->FileName.assign("old");
    Answer([&] { shown = dialog->Show(); },
           [&](xcb_window_t) {
               Type("new");
               host->Type(XKB_KEY_Return);
           });
    EXPECT_TRUE(shown);
    EXPECT_EQ(std::filesystem::path(dialog->FileName.value()).filename(), "new.mvp");

    const auto select = ui->Platform().CreateSelectFolderDialog();
    select->Title.assign("Select");
    select->Folder.assign(path);
    Answer([&] { shown = select->Show(); },
           [&](xcb_window_t) {
               for (const std::uint32_t key : {XKB_KEY_End, XKB_KEY_Return})
                   host->Type(key);
           });
    EXPECT_TRUE(shown);
    EXPECT_EQ(std::filesystem::canonical(select->Folder.value()),
              std::filesystem::canonical(path + "/inner"));
    Answer([&] { shown = select->Show(); }, [&](xcb_window_t) { host->Type(XKB_KEY_Escape); });
    EXPECT_FALSE(shown);
}

/// Folders of which one doesn't answer.
class DeadMount : public FolderLister {
public:
    explicit DeadMount(std::string deadPath) : dead(std::move(deadPath)) {}
    void list(const std::string& path, std::string_view extension, Visitor& visitor) const override
    {
        std::unique_lock guard(lock);
        if (path == dead)
            revived.wait(guard, [this] { return alive; });
        FolderLister::list(path, extension, visitor);
    }
    void Revive()
    {
        const std::lock_guard guard(lock);
        alive = true;
        revived.notify_all();
    }

private:
    const std::string dead;
    mutable std::mutex lock;
    mutable std::condition_variable revived;
    bool alive = false;
};

TEST_F(DialogTest, AFolderThatDoesntAnswerHoldsNothingUp)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "dead");
    folder.write("dead/a.mvp", "x");
    folder.write("beside.mvp", "x");
    const auto mount = std::make_shared<DeadMount>((folder / "dead/").string());
    FileRequest request;
    request.folder = (folder / "dead").string();
    std::string path;
    bool chosen = true;
    const auto ask = [&] { chosen = FileBrowser(*ui, request, mount).Run(path); };
    Answer(ask, [&](xcb_window_t) { host->Type(XKB_KEY_Escape); });
    EXPECT_FALSE(chosen);
    Answer(ask, [&](xcb_window_t) { Press({XKB_KEY_BackSpace, XKB_KEY_End, XKB_KEY_Return}); });
    EXPECT_TRUE(chosen);
    EXPECT_EQ(path, (folder / "beside.mvp").string());
    // Keys that are typed too early wait for the folder.
    Answer(ask, [&](xcb_window_t) {
        Press({XKB_KEY_End, XKB_KEY_Return});
        mount->Revive();
    });
    EXPECT_TRUE(chosen);
    EXPECT_EQ(path, (folder / "dead/a.mvp").string());
}

TEST_F(DialogTest, TheBrowserShowsOtherKindsAndOtherFolders)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "inner");
    for (const char* name : {"a.mvp", "z.txt", "inner/b.mvp"})
        folder.write(name, "x");
    std::filesystem::create_directory_symlink(folder / "inner", folder / "link");
    FileRequest request;
    request.folder = (folder / "missing").string();
    request.filters = FileRequest::ParseFilters("Presets|*.mvp|All files|*");
    std::string path;
    bool chosen = false;
    const auto ask = [&] { chosen = FileBrowser(*ui, request).Run(path); };
    ScopedEnvironment environment;
    environment.set("HOME", (folder / "").string());
    Answer(ask, [&](xcb_window_t window) {
        const auto place = host->Geometry(window);
        host->Click(place[0] + 40, place[1] + place[3] - 25);
        EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().size() == 2; }));
        Press({XKB_KEY_End, XKB_KEY_Return});
        EXPECT_TRUE(TestHost::Wait([&] { return host->TopWindows().size() == 1; }));
        Press({XKB_KEY_End, XKB_KEY_Return});
    });
    EXPECT_TRUE(chosen);
    EXPECT_EQ(path, (folder / "z.txt").string()) << "home, for want of the wanted one";

    // "..", "inner", "link", "a.mvp"
    Answer(ask, [&](xcb_window_t) {
        Press({XKB_KEY_End, XKB_KEY_Up, XKB_KEY_Return, XKB_KEY_End, XKB_KEY_Return});
    });
    EXPECT_EQ(path, (folder / "link/b.mvp").string());

    request.kind = FileRequest::Kind::SaveFile;
    request.defaultExtension = "mvp";
    Answer(ask, [&](xcb_window_t) {
        Type("inner/new");
        host->Type(XKB_KEY_Return);
    });
    EXPECT_EQ(path, (folder / "inner/new.mvp").string());
}

TEST(FileRequest, ReadsFiltersAndCompletesNames)
{
    const auto filters = FileRequest::ParseFilters("Presets|*.mvp;*.mvx|All|*.*|left over");
    ASSERT_EQ(filters.size(), 2u);
    EXPECT_EQ(filters[0].name, "Presets");
    struct Row {
        std::size_t filter;
        const char* name;
        bool fits;
    };
    for (const Row& row : {Row{0, "a.mvp", true}, Row{0, "A.MVX", true}, Row{0, "a.mvpx", false},
                           Row{0, "mvp", false}, Row{1, "plain", true}})
        EXPECT_EQ(FileRequest::Matches(filters[row.filter], row.name), row.fits) << row.name;
    FileRequest request;
    request.kind = FileRequest::Kind::SaveFile;
    request.defaultExtension = "mvp";
    EXPECT_EQ(request.WithExtension("/a.b/c"), "/a.b/c.mvp");
    EXPECT_EQ(request.WithExtension("/a/c.txt"), "/a/c.txt");
}

}  // namespace
