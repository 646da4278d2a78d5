#include "gallery/GalleryStyles.h"

#include "gui/PNGFiler.h"
#include "gui/Palette.h"
#include "gui/UserInterface.h"

#include <array>

namespace gallery {

namespace {

using gui::Alignment;

struct ButtonRow {
    const char* name;
    const char* prefix;  // of the backgrounds; empty for none
    const char* overlayOff = "";
    const char* overlayOn = "";
    Alignment overlayAlignment = Alignment::Centre;
    int overlayOpacity = 255;
    bool dark = false;  // for the darker ground: a normal picture of its own
    float width = 0.0f, height = 0.0f;
};

constexpr std::array<ButtonRow, static_cast<std::size_t>(ButtonLook::Count)> buttonRows{{
    {"Generic", "Generic"},
    {"Menu", "Generic", "IconMenuDark", "", Alignment::Right},
    {"Up and down", "Generic", "IconUpDownDark", "", Alignment::Right},
    {"Menu, darker ground", "Generic", "IconMenuDark", "", Alignment::Right, 255, true},
    {"Save", "Generic", "IconSave", "", Alignment::Centre, 255, true, 0, 18},
    {"Invert", "Generic", "IconPositiveDark", "IconNegativeDark", Alignment::Centre, 200, true, 0, 18},
    {"Lock", "Generic", "IconLockOff", "IconLockOn", Alignment::Centre, 255, true, 0, 18},
    {"Enable", "Generic", "IconEnabledOff", "IconEnabledOn", Alignment::Centre, 255, true},
    {"Bar", "Bar"},
    {"Add", "Add"},
    {"Add slot", "Generic", "IconAdd", "", Alignment::Centre, 128, true, 0, 18},
    {"Add step", "AddStep"},
    {"Hide", "", "IconHide", "", Alignment::Centre, 128, false, 12, 12},
    {"Hotspot", "Hotspot"},
    {"XY", "XY"},
    {"Save source", "", "IconSourceSave", "", Alignment::Centre, 128, false, 12, 12},
    {"Scroll left", "ScrollLeft"},
    {"Scroll right", "ScrollRight"},
    {"Source drag", "SourceDrag", "IconSourceDrag"},
    {"Component", "Component"},
    {"Component enable", "ComponentEnabled", "", "ButtonComponentEnabledOn"},
    {"Slot level", "SlotLevel"},
    {"Close", "", "IconCloseSmallDark", "", Alignment::Centre, 128, false, 17, 13},
    {"Sign", "", "IconPositive", "IconNegative", Alignment::Centre, 255, false, 17, 13},
    {"Slot source", "SlotInner", "IconSlotDrop", "", Alignment::Right, 0},
    {"Slot bypass", "SlotInner", "IconSlotBypassedOff", "IconSlotBypassedOn", Alignment::Centre, 0},
    {"Dry", "Dry", "ButtonDryOff", "ButtonDryOn"},
}};

}  // namespace

GalleryStyles::GalleryStyles(gui::UserInterface& ui) : userInterface(ui), slider(ui), stepSlider(ui)
{
    // As the editor has it: pictures are a little darker than they are drawn, and fit the palette then.
    gui::PNGFiler::SetDisplayGamma(1.1f);
    MakeButtons();
    MakeKnobs();
    slider.track = Find("ButtonSlotLevelNormal");
    slider.trackActive = Find("ButtonSlotLevelActive");
    slider.fill = Find("ButtonSlotLevelOn");
    slider.handle = Find("DisplayMid");
    slider.handleActive = slider.handleDown = Find("DisplayMidActive");
    stepSlider.track = Find("SliderBack");
    stepSlider.handle = Find("SliderNormal");
    stepSlider.handleActive = Find("SliderActive");
    stepSlider.handleDown = Find("SliderSelectedActive");
}

const gui::Bitmap& GalleryStyles::Picture(const std::string& name) const
{
    return userInterface.Bitmaps().Get(name + ".png");
}

const gui::Bitmap* GalleryStyles::Find(const std::string& name) const
{
    return name.empty() ? nullptr : &Picture(name);
}

const char* GalleryStyles::NameOf(ButtonLook look) { return buttonRows[static_cast<std::size_t>(look)].name; }

void GalleryStyles::MakeButtons()
{
    for (std::size_t i = 0; i < buttonRows.size(); ++i) {
        const ButtonRow& row = buttonRows[i];
        const auto look = static_cast<ButtonLook>(i);
        const std::string base = std::string("Button") + row.prefix;
        const bool bare = look == ButtonLook::SlotSource || look == ButtonLook::SlotBypass;
        const bool downIsActive = look == ButtonLook::ScrollLeft || look == ButtonLook::ScrollRight ||
                                  look == ButtonLook::SourceDrag || look == ButtonLook::SlotLevel;
        auto style = std::make_unique<gui::Button::Style>(userInterface);
        if (row.prefix[0] != '\0') {
            style->pictures.normal = row.dark ? Find("ButtonDarkNormal")
                                     : bare   ? nullptr
                                              : Find(base + "Normal");
            style->pictures.active = Find(base + "Active");
            style->pictures.down = Find(base + (downIsActive ? "Active" : "Down"));
        } else {
            style->Background.assign(gui::Button::BackgroundStyle::Centred);
        }
        style->overlayOff = Find(row.overlayOff);
        style->overlayOn = Find(row.overlayOn);
        style->OverlayAlignment.assign(row.overlayAlignment);
        style->OverlayOpacity.assign(row.overlayOpacity);
        style->DefaultWidth.assign(row.width);
        style->DefaultHeight.assign(row.height);
        style->TextAlignment.assign(Alignment::Centre);
        if (row.overlayAlignment == Alignment::Right)
            style->TextOffset.assign(-4.0f);
        if (look == ButtonLook::Bar) {
            style->onPictures.normal = Find("ButtonBarOn");
            style->TextColor.assign(gui::Palette::white);
        }
        buttons.push_back(std::move(style));
    }
}

void GalleryStyles::MakeKnobs()
{
    struct KnobRow {
        const char* back;
        const char* overlay;
        float outerRadius, innerRadius, tolerance;
    };
    constexpr std::array<KnobRow, 4> rows{{
        {"KnobNormal", "KnobNormal", 19.0f, 7.0f, 50.0f},
        {"KnobOuter", "KnobOuter", 27.0f, 7.0f, 50.0f},
        {"KnobInner", "KnobNormal", 19.0f, 7.0f, 50.0f},
        {"KnobOuter", "KnobLarge", 27.0f, 7.0f, 50.0f},
    }};
    const auto add = [this](float outerRadius, float innerRadius, float tolerance) -> gui::Knob::Style& {
        knobs.push_back(std::make_unique<gui::Knob::Style>(userInterface));
        knobs.back()->OuterRadius.assign(outerRadius);
        knobs.back()->InnerRadius.assign(innerRadius);
        knobs.back()->HandleTolerance.assign(tolerance);
        return *knobs.back();
    };
    for (const KnobRow& row : rows) {
        gui::Knob::Style& style = add(row.outerRadius, row.innerRadius, row.tolerance);
        const std::string overlay = std::string(row.overlay) + "Overlay";
        style.backNormal = Find(std::string(row.back) + "BackNormal");
        style.backActive = Find(std::string(row.back) + "BackActive");
        style.overlayNormal = Find(overlay + "Normal");
        style.overlayActive = Find(overlay + "Active");
        style.overlayRotate = Find(overlay + "Rotate");
        style.overlayDown = Find(overlay + "Down");
    }
    gui::Knob::Style& ring = add(61.0f, 39.0f, 10.0f);
    ring.overlayNormal = Find("KnobSyncOverlayNormal");
    ring.overlayActive = ring.overlayRotate = Find("KnobSyncOverlayActive");
    ring.overlayDown = Find("KnobSyncOverlayDown");
}

}  // namespace gallery
