#include "gallery/Gallery.h"

#include "foundation/TextCompare.h"
#include "gui/RootControl.h"
#include "gui/ToggleButton.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace gallery {

namespace {

constexpr float barHeight = 34.0f;
constexpr float footHeight = 24.0f;
constexpr float footTop = Gallery::windowSize.y - footHeight;

struct PageEntry {
    const char* name;
    std::unique_ptr<GalleryPage> (*make)(const PageParts& parts, gui::Control* parent);
    const char* help;
};

constexpr std::array<PageEntry, 10> pages{{
    {"Knobs", MakeKnobsPage,
     "Drag the body up and down, turn the pointer; Shift: fine, Ctrl: default, Alt: linked ones too"},
    {"Buttons", MakeButtonsPage,
     "Each picture is what a hand has done to the button; those on the right below are live"},
    {"Values", MakeValuesPage, "Drag, wheel, click; slow drags are fine ones"},
    {"Menus", MakeMenusPage,
     "What the desktop's part of the interface shows; the fields and buttons are live"},
    {"Scrolling", MakeScrollingPage, "Drag and let go while it moves, or use the wheel; the buttons repeat"},
    {"Overlay", MakeOverlayPage, "What lies under a dim layer, and what is lifted above it"},
    {"Text", MakeTextPage, "Sizes in points; the interface is set in 8"},
    {"Labels", MakeLabelsPage,
     "Texts, pictures and shapes as controls: how they are aligned, cut and stretched"},
    {"Painting", MakePaintingPage, "What the canvas draws"},
    {"Motion", MakeMotionPage, "Press Run, Fade and Flash, and move over the knobs"},
}};

constexpr auto pageNames = [] {
    std::array<const char*, pages.size()> names{};
    for (std::size_t i = 0; i < pages.size(); ++i)
        names[i] = pages[i].name;
    return names;
}();

std::string PercentOf(float scale) { return std::to_string(std::lround(scale * 100.0f)) + " %"; }

}  // namespace

std::span<const char* const> Gallery::PageNames() { return pageNames; }

int Gallery::PageOf(const std::string& name)
{
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (compareNoCase(name, pages[i].name) == 0)
            return static_cast<int>(i);
    return -1;
}

Gallery::Gallery(gui::UserInterface& ui) : Control(ui, &ui.GetRootControl()), animator(ui), styles(ui)
{
    animator.FramesPerSecond.assign(60);
    animator.Enabled.assign(true);
    Opaque.assign(true);
    SetSize(windowSize);
    AddTabs();
    AddScale();
    auto& keys = Add<Caption>(ui, this, "1 to 9 and 0: pages    + and -: size", 7.5f, gui::Palette::shade);
    keys.Place({windowSize.x - 12.0f, footTop + 6.0f}, gui::Alignment::Right);
    help = &Add<Caption>(ui, this, "", 7.5f, gui::Palette::shade);
    help->Place({12.0f, footTop + 6.0f});
    ShowPage(0);
    SetFocusedChild(nullptr);  // keys come here
}

Gallery::~Gallery()
{
    page.reset();
    while (!owned.empty())
        owned.pop_back();
}

void Gallery::AddTabs()
{
    auto& title = Add<Caption>(userInterface, this, "Gallery", 10.0f, gui::Palette::white);
    title.Font().Bold.assign(true);
    title.Place({12.0f, 9.0f});
    constexpr float width = 69.0f;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        auto& tab = Add<gui::ToggleButton>(userInterface, this, &animator, &styles.Button(ButtonLook::Bar));
        tab.SetBounds(88.0f + width * static_cast<float>(i), 8.0f, width, 18.0f);
        tab.SetText(pages[i].name);
        if (tabs)
            tabs->AddButton(tab);
        else
            tabs = &tab;
    }
    tabs->OnValueChanged.addHandler(NotifyEvent::handler([this](void*) { ShowPage(tabs->Value.value()); }));
}

void Gallery::AddScale()
{
    const auto add = [this](float left, float width, const char* text) -> gui::Button& {
        auto& made = Add<gui::Button>(userInterface, this, &animator, &styles.Button(ButtonLook::Bar));
        made.SetBounds(left, 8.0f, width, 18.0f);
        made.SetText(text);
        return made;
    };
    add(790.0f, 30.0f, "−").OnClick.addHandler(NotifyEvent::handler([this](void*) { StepScale(-1); }));
    scaleButton = &add(820.0f, 64.0f, "");
    scaleButton->OnClick.addHandler(NotifyEvent::handler([this](void*) { SetScale(1.0f); }));
    add(884.0f, 30.0f, "+").OnClick.addHandler(NotifyEvent::handler([this](void*) { StepScale(1); }));
    ShowScale();
}

void Gallery::ShowPage(int index)
{
    pageIndex = std::clamp(index, 0, static_cast<int>(pages.size()) - 1);
    const PageEntry& entry = pages[static_cast<std::size_t>(pageIndex)];
    page.reset();
    page = entry.make({userInterface, animator, styles}, this);
    page->SetPosition({0.0f, barHeight});
    tabs->Value.assign(pageIndex);
    help->SetString(entry.help);
}

void Gallery::SetScale(float scale)
{
    gui::DeviceBacking& backing = userInterface.Backing();
    backing.SetLevel(gui::DeviceBacking::LevelOf(scale));
}

void Gallery::StepScale(int levels)
{
    const auto& scales = gui::DeviceBacking::levelScales;
    const int level = gui::DeviceBacking::LevelOf(userInterface.Backing().Scale()) + levels;
    SetScale(scales[static_cast<std::size_t>(std::clamp(level, 0, gui::DeviceBacking::levelCount - 1))]);
}

void Gallery::ShowScale() { scaleButton->SetText(PercentOf(userInterface.Backing().Scale())); }

bool Gallery::KeyPressed(int keyCode, int character, int)
{
    if (keyCode != gui::KeyCode::character)
        return false;
    if (character >= '0' && character <= '9')
        ShowPage((character - '0' + 9) % 10);  // as they stand on the keyboard: 0 is the tenth
    else if (character == '+' || character == '=')
        StepScale(1);
    else if (character == '-')
        StepScale(-1);
    else
        return false;
    return true;
}

void Gallery::PaintContent(gui::Canvas& canvas)
{
    canvas.FillRect({0.0f, 0.0f, windowSize.x, barHeight}, gui::Palette::bar);
    canvas.FillRect({0.0f, footTop, windowSize.x, windowSize.y}, gui::Palette::bar);
}

void Gallery::BackingScaleChanged()
{
    ShowScale();
    Control::BackingScaleChanged();
}

}  // namespace gallery
