#include "gallery/GalleryPage.h"

#include "gui/DragStage.h"
#include "gui/UserInterface.h"

namespace gallery {

namespace {

using gui::Alignment;
using gui::Canvas;
using gui::Point;
using gui::Rect;
using CutOutMode = gui::Overlay::CutOutMode;

/// A mark that stands on the overlay alone.
class Ghost : public gui::Overlay::VirtualGhostControl {
public:
    Ghost(const GalleryStyles& galleryStyles, gui::Rect ghostRect) : styles(galleryStyles), rect(ghostRect) {}
    gui::Rect Rect() const override { return rect; }
    void Paint(Canvas& canvas) override
    {
        const gui::Bitmap& face = styles.Picture("ParameterValueDisplayBackground");
        canvas.DrawBitmapStretched(face, gui::Rect::At({}, rect.Size()),
                                   gui::Rect::At({}, face.GetLogicalSize()), 0.0f);
        const gui::Bitmap& dot = styles.Picture("XYDot");
        canvas.DrawBitmapAt(dot, (rect.Size() - dot.GetLogicalSize()) * 0.5f);
    }

private:
    const GalleryStyles& styles;
    gui::Rect rect;
};

/// Something that a drag can be dropped on.
class Target : public gui::Control {
public:
    Target(gui::UserInterface& ui, gui::Control* parent, const GalleryStyles& galleryStyles)
        : Control(ui, parent), styles(galleryStyles)
    {}
    void OtherClicked(int notice) override
    {
        entered = notice != gui::DragStage::DragNotice::left;
        held = notice == gui::DragStage::DragNotice::held;
        Invalidate();
        Control::OtherClicked(notice);
    }
    void PaintContent(Canvas& canvas) override
    {
        const gui::Bitmap& face = styles.Picture(held      ? "ButtonXYDown"
                                                 : entered ? "ButtonXYActive"
                                                           : "ButtonXYNormal");
        canvas.DrawBitmapStretched(face, GetClientRect(), Rect::At({}, face.GetLogicalSize()), 0.0f);
    }

private:
    const GalleryStyles& styles;
    bool entered = false;
    bool held = false;
};

class OverlayPage : public GalleryPage {
public:
    OverlayPage(const PageParts& pageParts, gui::Control* parent);

private:
    /// Some controls with a dim layer above them.
    class Scene;
    class Stage;
    class Passing;

    std::vector<gui::Control*> targets;
    Caption* told = nullptr;
};

class OverlayPage::Scene : public GalleryPage {
public:
    Scene(const PageParts& sceneParts, gui::Control* parent) : GalleryPage(sceneParts, parent)
    {
        SetSize({294, 172});
        for (int i = 0; i < 3; ++i)
            controls.push_back(&AddStyled<gui::Knob>({22.0f + 84.0f * static_cast<float>(i), 16},
                                                     parts.styles.Knob(KnobLook::Large)));
        controls.push_back(&AddButton({22, 104, 122, 122}, ButtonLook::MenuDark, "Stretch"));
        AddStyled<gui::Knob>({190, 96}, parts.styles.Knob(KnobLook::Outer));
        controls.push_back(&AddStyled<gui::Knob>({198, 104}, parts.styles.Knob(KnobLook::Inner)));
    }
    /// Lays an overlay over it.
    /// @param bits  which controls stand above it, and after those the ghost; -1 for no overlay
    void Lift(int bits)
    {
        if (bits < 0)
            return;
        auto* const overlay = new gui::Overlay(parts.ui, nullptr);
        for (std::size_t i = 0; i < controls.size(); ++i)
            if (bits >> i & 1)
                overlay->AddCutOut(*controls[i], CutOutMode::Lifted);
        if (bits >> controls.size() & 1)
            overlay->AddGhost(std::make_unique<Ghost>(parts.styles, Rect{40, 132, 100, 164}));
        overlay->Show(*this);
    }

private:
    std::vector<gui::Control*> controls;
};

/// Goes at the first press.
class OverlayPage::Passing : public gui::Overlay {
public:
    using Overlay::Overlay;
    void MouseUp(int, Point, int) override { Close(); }
};

/// Carries a source button's arrow to the targets.
class OverlayPage::Stage : public gui::DragStage {
public:
    Stage(OverlayPage& overlayPage)
        : DragStage(overlayPage.parts.ui, &overlayPage.parts.animator), page(overlayPage)
    {}
    void BuildContent() override
    {
        for (gui::Control* target : page.targets)
            AddCutOut(*target, CutOutMode::Lifted);
    }
    void Drop() override
    {
        page.told->SetString(HoverIndex() < 0 ? "Dropped beside them"
                                              : "Dropped on " + std::to_string(HoverIndex() + 1));
        DragStage::Drop();
    }

private:
    OverlayPage& page;
};

OverlayPage::OverlayPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
{
    const char* const names[] = {"Nothing above it", "Dimmed, two lifted",
                                 "A button, an inner knob and a ghost"};
    const int lifted[] = {-1, 1 | 4, 8 | 16 | 32};
    for (int i = 0; i < 3; ++i) {
        const float left = 12.0f + 304.0f * static_cast<float>(i);
        AddText({left, 14}, names[i], Alignment::Left, 8.0f, gui::Palette::ink);
        // On stages of their own: an overlay has all input of its interface.
        AddPose(
            {left, 34},
            [&pageParts = parts, bits = lifted[i]](gui::UserInterface& ui, gui::Control* stage) {
                auto scene =
                    std::make_unique<Scene>(PageParts{ui, pageParts.animator, pageParts.styles}, stage);
                scene->Lift(bits);
                return scene;
            },
            Pose::Hand::Away);
    }
    AddCard({12, 218, 914, 444}, "Drag from the left to the others; hold still over one",
            gui::Palette::panel);
    auto& source = AddStyled<gui::Button>({40, 308}, parts.styles.Button(ButtonLook::SourceDrag));
    source.OnMouseDown.addHandler(NotifyEvent::handler([this, &source](void*) {
        auto* const stage = new Stage(*this);
        stage->StartDrag(source, std::make_unique<gui::DragObject>());
    }));
    for (int i = 0; i < 5; ++i) {
        auto& target = Add<Target>(parts.ui, this, parts.styles);
        target.SetBounds(150.0f + 150.0f * static_cast<float>(i), 270, 110, 110);
        targets.push_back(&target);
    }
    AddButton({784, 416, 904, 434}, ButtonLook::Generic, "Dim all but these", [this] {
        auto* const overlay = new Passing(parts.ui, &parts.animator);
        for (gui::Control* target : targets)
            overlay->AddCutOut(*target, CutOutMode::Lifted);
        overlay->Show(*this);
    });
    told = &AddText({22, 422}, "Nothing dropped yet", Alignment::Left, 8.0f, gui::Palette::ink);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeOverlayPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<OverlayPage>(parts, parent);
}

}  // namespace gallery
