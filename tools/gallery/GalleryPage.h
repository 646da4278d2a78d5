#pragma once

#include "gallery/Caption.h"
#include "gallery/GalleryStyles.h"
#include "gallery/Pose.h"
#include "gui/Animator.h"
#include "gui/UserInterface.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace gallery {

/// What pages are made of.
struct PageParts {
    gui::UserInterface& ui;
    gui::Animator& animator;
    GalleryStyles& styles;
};

/// One sheet of the gallery. It owns all that stands on it.
class GalleryPage : public gui::Control {
public:
    static constexpr gui::Point sheetSize{926.0f, 456.0f};  // logical units

    GalleryPage(const PageParts& pageParts, gui::Control* parent);
    ~GalleryPage() override;

    /// How long a still picture waits after the page has opened, milliseconds.
    virtual int StillDelayMs() const { return 400; }

    void PaintContent(gui::Canvas& canvas) override;

protected:
    using Paint = std::function<void(gui::Canvas& canvas, const gui::Rect& area)>;

    /// Makes a control that the page owns, on top of the others.
    template <class T, class... Arguments>
    T& Add(Arguments&&... arguments)
    {
        auto made = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T& control = *made;
        owned.push_back(std::move(made));
        return control;
    }
    /// A control of the page's own animator, at a place.
    template <class T, class Style>
    T& AddStyled(gui::Point at, const Style& style)
    {
        T* control = nullptr;
        if constexpr (std::is_base_of_v<gui::Button, T>)
            control = &Add<T>(parts.ui, this, &parts.animator, &style);
        else
            control = &Add<T>(parts.ui, this, &parts.animator, style);
        control->SetPosition(at);
        return *control;
    }
    gui::Button& AddButton(const gui::Rect& bounds, ButtonLook look, const std::string& text,
                           std::function<void()> clicked = {});
    /// A sheet of the lighter ground with a title in its corner.
    void AddCard(const gui::Rect& bounds, const std::string& title, gui::Color ground = gui::Palette::panel);
    Caption& AddText(gui::Point at, const std::string& text, gui::Alignment alignment = gui::Alignment::Left,
                     float points = 7.5f, gui::Color color = gui::Palette::soft);
    /// A flat piece of painting.
    gui::Control& AddPainting(const gui::Rect& bounds, Paint paint);
    Pose& AddPose(gui::Point at, Pose::Maker maker, Pose::Hand hand, gui::Point handAt = {});

    /// Deletes all that stands on the page, for one whose own parts that leans on.
    void Empty();

    PageParts parts;

private:
    std::vector<std::unique_ptr<gui::Control>> owned;
};

/// A point around the middle of a control.
/// @param degrees  0 is up, growing clockwise
gui::Point PointAround(gui::Point controlSize, float degrees, float radius);

// The pages, in the order of their tabs.
std::unique_ptr<GalleryPage> MakeKnobsPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeButtonsPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeValuesPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeMenusPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeScrollingPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeOverlayPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeTextPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeLabelsPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakePaintingPage(const PageParts& parts, gui::Control* parent);
std::unique_ptr<GalleryPage> MakeMotionPage(const PageParts& parts, gui::Control* parent);

}  // namespace gallery
