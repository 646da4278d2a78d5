#pragma once

#include "gui/AnimatedControl.h"
#include "gui/Bitmap.h"

#include <array>
#include <memory>

namespace gui {

/// Fades of a colour along the edges of a scrolled area that has more beyond them. They give way to the
/// mouse.
class FadeOverlay : public AnimatedControl {
public:
    enum class Edge { Left = 0, Top = 1, Right = 2, Bottom = 3 };

    FadeOverlay(UserInterface& ui, Control* parent, Animator* controlAnimator);

    Property<gui::Color> Color{gui::Color::Black(), this};
    Property<Rect> Insets{Rect{}, this};  // from the edges of the control to those of the area
    Property<float> FadeSize{16.0f, this};

    void SetShown(Edge edge, bool shown);
    bool IsEdgeShown(Edge edge) const { return edges[static_cast<std::size_t>(edge)].shown; }
    /// Where an edge's fade lies.
    Rect EdgeRect(Edge edge) const;

    int GetAlphaAt(Point point) const override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseLeft() override;
    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;
    void Resized() override;
    void BackingScaleChanged() override;

private:
    struct EdgeState {
        bool shown = false;
        bool hovered = false;
        int opacity = 255;
        std::unique_ptr<Bitmap> picture;  // null when it is to be painted anew
    };

    void SetHovered(Edge edge, bool hovered);
    void DropPictures();
    const Bitmap& Picture(Edge edge);

    std::array<EdgeState, 4> edges;
};

}  // namespace gui
