#pragma once

#include "gui/ButtonStyle.h"
#include "gui/KnobStyle.h"
#include "gui/SwitchStyle.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gallery {

/// The looks of buttons, by what they are for.
enum class ButtonLook {
    Generic,
    Menu,
    UpDown,
    MenuDark,
    Save,
    Invert,
    Lock,
    Enable,
    Bar,
    Add,
    AddSlot,
    AddStep,
    Hide,
    Hotspot,
    XY,
    SaveSource,
    ScrollLeft,
    ScrollRight,
    SourceDrag,
    Component,
    ComponentEnable,
    SlotLevel,
    Close,
    Sign,
    SlotSource,
    SlotBypass,
    Dry,
    Count
};

enum class KnobLook { Normal, Outer, Inner, Large, Ring, Count };

/// What the controls of the pages look like, made of the pictures that the program carries.
class GalleryStyles {
public:
    explicit GalleryStyles(gui::UserInterface& ui);

    const gui::Button::Style& Button(ButtonLook look) const
    {
        return *buttons[static_cast<std::size_t>(look)];
    }
    const gui::Knob::Style& Knob(KnobLook look) const { return *knobs[static_cast<std::size_t>(look)]; }
    /// A groove that fills up, with a dot to drag.
    const gui::Switch::Style& Slider() const { return slider; }
    /// One step of a sequence.
    const gui::Switch::Style& StepSlider() const { return stepSlider; }
    /// Throws EResource if there is none of that name.
    const gui::Bitmap& Picture(const std::string& name) const;

    static const char* NameOf(ButtonLook look);
    /// True if the look is made for a dark bar.
    static bool IsForBar(ButtonLook look) { return look == ButtonLook::Bar; }

private:
    void MakeButtons();
    void MakeKnobs();
    const gui::Bitmap* Find(const std::string& name) const;

    gui::UserInterface& userInterface;
    std::vector<std::unique_ptr<gui::Button::Style>> buttons;
    std::vector<std::unique_ptr<gui::Knob::Style>> knobs;
    gui::Switch::Style slider;
    gui::Switch::Style stepSlider;
};

}  // namespace gallery
