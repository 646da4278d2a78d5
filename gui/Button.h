#pragma once

#include "foundation/IntervalTimer.h"
#include "gui/RolloverValueControl.h"
#include "gui/Text.h"

#include <memory>
#include <string>

namespace gui {

/// Something to press, with a background, an overlay picture and a text.
class Button : public RolloverValueControl {
public:
    class Style;
    enum class BackgroundStyle {
        Stretched = 0,  // the ends stay, the middle repeats
        Centred = 1,
        StretchedHalves = 2,
    };
    enum class ButtonStyle {
        Plain = 0,
        KeepsPressed = 1,  // looks pressed as long as it is held, also with the mouse beside it
    };
    enum class OverlayStyle {
        Aligned = 0,    // in its own size
        Stretched = 1,  // over the whole button
    };
    enum class VisualState { Normal = 0, Hover = 1, Down = 2 };

    /// @param initialStyle  null for none; outlives the button
    Button(UserInterface& ui, Control* parent, Animator* controlAnimator,
           const Style* initialStyle = nullptr);
    ~Button() override;

    Property<BackgroundStyle> Background{BackgroundStyle::Stretched, this};
    Property<float> Corner{0.0f, this};  // the least length of the background's ends, logical units
    Property<ButtonStyle> Behavior{ButtonStyle::Plain, this};
    Property<bool> On{false, this};
    Property<bool> RectangularHit{true, this};
    Property<bool> Toggles{false, this};  // a click turns `On` around
    LimitedProperty<int> LineCount{1, 1, 16, this};
    Property<Alignment> TextAlignment{Alignment::Left, this};
    Property<float> TextMargin{6.0f, this};  // logical units beside the text
    Property<float> TextOffset{0.0f, this};  // moves the text to the right
    Property<int> TextOpacity{255, this};    // 0..255, as long as the mouse isn't over the button
    Property<OverlayStyle> OverlayMode{OverlayStyle::Aligned, this};
    Property<Alignment> OverlayAlignment{Alignment::Left, this};
    Property<float> OverlayMargin{0.0f, this};   // logical units beside the overlay
    Property<int> OverlayOpacity{255, this};     // 0..255, as long as the mouse isn't over the button
    Property<Rect> OverlaySource{Rect{}, this};  // the part of the overlay that shows; empty for all
    Property<bool> HoldToToggle{false, this};    // held long, it turns `On` off at the release
    Property<float> HitPadding{0.0f, this};      // by how much a rectangular hit area is larger
    Property<Rect> HitInsets{Rect{}, this};      // what is taken off each of its edges

    /// Takes over the style's pictures, properties and size.
    void SetStyle(const Style& newStyle);
    void SetText(const std::string& text);
    /// The font and colour. Null where the platform has no text.
    Text* Label() { return label.get(); }
    /// Replaces the style's overlays; null for none.
    void SetOverlay(const Bitmap* off, const Bitmap* on = nullptr);
    VisualState State() const { return visualState; }
    bool IsPressed() const { return pressed; }

    int GetAlphaAt(Point point) const override;
    void MouseEntered() override;
    void MouseLeft() override;
    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    void PaintContent(Canvas& canvas) override;
    void Resized() override;
    void propertyChanged(AbstractProperty& property) override;

protected:
    /// True if a press opens something.
    virtual bool OpensPopup() const { return false; }
    /// Shows it until it is closed.
    virtual void ShowPopup() {}
    /// The overlay of the button's state; null without one.
    const Bitmap* Overlay() const { return On.value() && overlayOn ? overlayOn : overlayOff; }
    /// `On` has a new value.
    virtual void OnStateChanged() {}
    void PaintBackground(Canvas& canvas);
    void PaintOverlay(Canvas& canvas);
    void PaintText(Canvas& canvas);

private:
    void SetVisualState(VisualState newState);
    void Press(Point point, int inputFlags);
    void OpenPopup(Point point, int inputFlags);
    void Release(Point point);
    bool IsInHitArea(Point point) const;
    const Bitmap* BackgroundPicture();
    void LayOutText();
    int ShownOpacity(int opacity) const;

    const Style* style = nullptr;
    const Bitmap* overlayOff = nullptr;
    const Bitmap* overlayOn = nullptr;
    std::unique_ptr<Text> label;
    VisualState visualState = VisualState::Normal;
    bool pressed = false;
    bool holding = false;  // turned on by this press
    std::unique_ptr<IntervalTimer> holdTimer;
};

}  // namespace gui
