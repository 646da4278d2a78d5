#include "gallery/GalleryPage.h"

#include "gui/FileDialogs.h"
#include "gui/Menu.h"
#include "gui/PopupMenu.h"
#include "gui/TextEditor.h"
#include "gui/UserInterface.h"
#include "platform/DialogControls.h"
#include "platform/DialogStyle.h"
#include "platform/TextField.h"

namespace gallery {

namespace {

using gui::Alignment;
using gui::Point;
using gui::Rect;

/// A button whose press shows a menu.
class MenuOpener : public gui::Button {
public:
    using Button::Button;
    std::function<void()> OnShow;

protected:
    bool OpensPopup() const override { return true; }
    void ShowPopup() override { OnShow(); }
};

class MenusPage : public GalleryPage {
public:
    MenusPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddMenus();
        AddDialogs();
        AddFields();
        AddLists();
    }

private:
    void AddMenus();
    void AddDialogs();
    void AddFields();
    void AddLists();
    void ShowMenu(gui::Button& opener, const std::function<void(gui::Menu&)>& fill);
    void AddMenuButton(float top, const char* name, const char* help, std::function<void(gui::Menu&)> fill);
    void Tell(const std::string& what) { told->SetString(what); }
    void AskForFile(gui::OpenSaveDialog::Kind kind);
    void AskForFolder();
    void AskForText(const Rect& bounds);

    Caption* told = nullptr;
    std::unique_ptr<gui::TextEditor> editor;
    std::vector<std::unique_ptr<gui::TextFieldModel>> models;
};

void MenusPage::AddMenuButton(float top, const char* name, const char* help,
                              std::function<void(gui::Menu&)> fill)
{
    AddText({172, top + 2.5f}, help);
    MenuOpener& opener =
        Add<MenuOpener>(parts.ui, this, &parts.animator, &parts.styles.Button(ButtonLook::Menu));
    opener.SetBounds(22, top, 138, 18);
    opener.SetText(name);
    opener.OnShow = [this, &opener, fill = std::move(fill)] { ShowMenu(opener, fill); };
}

void MenusPage::ShowMenu(gui::Button& opener, const std::function<void(gui::Menu&)>& fill)
{
    const auto popup = parts.ui.Platform().CreatePopupMenu();
    if (!popup)
        return Tell("There are no menus without a window");
    gui::Menu menu;
    fill(menu);
    const gui::MenuItem* const chosen = popup->Show(menu, Rect::At(opener.ToRoot({}), opener.GetSize()));
    Tell(chosen ? "Chosen: " + chosen->Text.value() : "Nothing chosen");
}

void MenusPage::AddMenus()
{
    AddCard({12, 12, 308, 218}, "Menus");
    AddMenuButton(38, "Checks and separators", "One checked, one disabled", [](gui::Menu& menu) {
        for (const char* text : {"Off", "-", "Tape", "Stretch", "Crossfade", "-", "Not now"})
            menu.AddItem(text);
        menu.GetItem(2)->Checked.assign(true);
        menu.GetItem(6)->Enabled.assign(false);
    });
    AddMenuButton(66, "Submenus", "Two levels deep", [](gui::Menu& menu) {
        for (const char* kind : {"XLFO", "Envelope", "MIDI"}) {
            auto submenu = std::make_unique<gui::Menu>(kind);
            for (int i = 1; i <= 4; ++i)
                submenu->AddItem(std::string(kind) + " " + std::to_string(i));
            auto deeper = std::make_unique<gui::Menu>("More");
            deeper->AddItem(std::string(kind) + " 5");
            submenu->AddItem(-1, std::move(deeper));
            menu.AddItem(-1, std::move(submenu));
        }
    });
    AddMenuButton(94, "Icons", "In their own size", [this](gui::Menu& menu) {
        for (const char* icon : {"IconSave", "IconAdd", "IconLockOn"})
            menu.AddItem(icon).SetIcon(&parts.styles.Picture(icon));
    });
    AddMenuButton(122, "A hundred entries", "It scrolls; type to find", [](gui::Menu& menu) {
        for (int i = 1; i <= 100; ++i)
            menu.AddItem("Preset " + std::to_string(i));
    });
    told = &AddText({22, 194}, "Nothing chosen yet", Alignment::Left, 8.0f, gui::Palette::ink);
}

void MenusPage::AskForFile(gui::OpenSaveDialog::Kind kind)
{
    const auto dialog = parts.ui.Platform().CreateOpenSaveDialog();
    if (!dialog)
        return Tell("There are no dialogs without a window");
    dialog->DialogKind.assign(kind);
    dialog->Filter.assign("Preset files|*.mvp;*.mvx|All files|*");
    dialog->DefaultExtension.assign("mvp");
    Tell(dialog->Show() ? dialog->FileName.value() : "No file");
}

void MenusPage::AskForFolder()
{
    const auto dialog = parts.ui.Platform().CreateSelectFolderDialog();
    if (!dialog)
        return Tell("There are no dialogs without a window");
    Tell(dialog->Show() ? dialog->Folder.value() : "No folder");
}

void MenusPage::AddDialogs()
{
    AddCard({12, 230, 308, 444}, "Dialogs");
    using Message = gui::PlatformDelegate::MessageButton;
    using Kind = gui::OpenSaveDialog::Kind;
    const auto opener = [this](float top, const char* name, std::function<void()> clicked) {
        AddButton({22, top, 160, top + 18}, ButtonLook::Generic, name, std::move(clicked));
    };
    opener(256, "Information",
           [this] { parts.ui.Platform().ShowMessageBox("The preset was saved.", Message::ok, {}); });
    opener(284, "Confirmation", [this] {
        parts.ui.Platform().ShowMessageBox("Replace the preset \"Tape Loop\"?\n\nThis can't be undone.",
                                           Message::ok | Message::cancel, [this] { Tell("Confirmed"); });
    });
    opener(312, "Open a file", [this] { AskForFile(Kind::Open); });
    opener(340, "Save a file", [this] { AskForFile(Kind::Save); });
    opener(368, "Choose a folder", [this] { AskForFolder(); });
    opener(396, "Edit a text", [this] { AskForText({172, 396, 298, 414}); });
}

void MenusPage::AskForText(const Rect& bounds)
{
    editor = parts.ui.Platform().CreateTextEditor();
    if (!editor)
        return Tell("There are no editors without a window");
    editor->OnReturn.addHandler(NotifyEvent::handler([this](void*) {
        Tell("Entered: " + editor->GetText());
        editor->Close();
    }));
    editor->OnEscape.addHandler(NotifyEvent::handler([this](void*) { editor->Close(); }));
    editor->Open("Tape Loop", bounds.Translated(ToRoot({})));
}

void MenusPage::AddFields()
{
    AddCard({320, 12, 616, 444}, "Text fields");
    struct Row {
        const char* name;
        const char* text;
        int first, last;  // of the selection
        Alignment alignment = Alignment::Left;
        bool password = false, caret = false;
    };
    const Row rows[] = {{"At rest", "Tape Loop", 9, 9},
                        {"Caret", "Tape Loop", 4, 4, Alignment::Left, false, true},
                        {"All selected", "Tape Loop", 0, 9, Alignment::Left, false, true},
                        {"Part selected", "Ça va où? Über", 3, 8, Alignment::Left, false, true},
                        {"Centred", "Tape Loop", 9, 9, Alignment::Centre},
                        {"Right", "12.5 dB", 0, 4, Alignment::Right, false, true},
                        {"Hidden", "secret", 6, 6, Alignment::Left, true, true},
                        {"Longer than the field", "A name that is much longer than its field", 40, 40,
                         Alignment::Left, false, true}};
    float top = 40;
    for (const Row& row : rows) {
        AddText({330, top + 4}, row.name, Alignment::Left, 7.5f);
        AddPainting({447, top - 1, 607, top + 21}, [](gui::Canvas& canvas, const Rect& area) {
            canvas.FillRect(area, gui::DialogStyle::border);
            canvas.FillRect(area.Inset(1.0f), gui::DialogStyle::field);
        });
        auto& model = *models.emplace_back(std::make_unique<gui::TextFieldModel>());
        model.SetText(row.text);
        model.Select(row.first, row.last);
        Caption& font =
            AddText({-100, -100}, "", Alignment::Left, gui::DialogStyle::textPoints, gui::DialogStyle::text);
        auto& field = Add<gui::TextField>(parts.ui, this, model, font.Font());
        field.SetBounds(448, top, 158, 20);
        field.SetAlignment(row.alignment);
        field.SetPassword(row.password);
        field.ShowCaret(row.caret);
        field.ModelChanged();
        top += 32;
    }
}

void MenusPage::AddLists()
{
    AddCard({628, 12, 914, 444}, "Parts of dialogs", gui::DialogStyle::background);
    const auto push = [this](float left, const char* text) -> gui::DialogButton& {
        auto& made = Add<gui::DialogButton>(parts.ui, this, text, [this, text] { Tell(text); });
        made.SetBounds(left, 408, 80, 24);
        return made;
    };
    push(730, "Cancel");
    push(820, "Open").SetDefault(true);
    auto& words =
        Add<gui::DialogText>(parts.ui, this,
                             "Replace the preset \"Tape Loop\"? The one that is there would be gone.\n\n"
                             "This can't be undone.",
                             260.0f);
    words.SetPosition({640, 40});
    auto& list = Add<gui::DialogList>(parts.ui, this);
    list.SetBounds(640, 130, 260, 260);
    std::vector<gui::DialogList::Entry> entries{{"..", true}, {"Factory", true}, {"My presets", true}};
    for (int i = 1; i <= 20; ++i)
        entries.push_back({"Tape Loop " + std::to_string(i) + ".mvp", false});
    list.SetEntries(std::move(entries));
    list.Select(4);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeMenusPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<MenusPage>(parts, parent);
}

}  // namespace gallery
