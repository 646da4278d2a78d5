#include "gui/Button.h"

#include "gui/ButtonStyle.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

namespace gui {

namespace {

constexpr std::uint32_t longPressMs = 501;

}  // namespace

Button::Button(UserInterface& ui, Control* parent, Animator* controlAnimator, const Style* initialStyle)
    : RolloverValueControl(ui, parent, controlAnimator),
      label(ui.Platform().CreateText()),
      holdTimer(createIntervalTimer(ui.Clock()))
{
    if (label)
        label->OnChanged.setHandler(NotifyEvent::handler([this](void*) { Invalidate(); }));
    if (initialStyle)
        SetStyle(*initialStyle);
}

Button::~Button() = default;

void Button::SetStyle(const Style& newStyle)
{
    const ScopedUpdate batch(*this);
    style = &newStyle;
    Background.assign(style->Background.value());
    Corner.assign(style->Corner.value());
    Behavior.assign(style->Behavior.value());
    RectangularHit.assign(style->RectangularHit.value());
    LineCount.assign(style->LineCount.value());
    TextAlignment.assign(style->TextAlignment.value());
    TextMargin.assign(style->TextMargin.value());
    TextOffset.assign(style->TextOffset.value());
    TextOpacity.assign(style->TextOpacity.value());
    OverlayMode.assign(style->OverlayMode.value());
    OverlayAlignment.assign(style->OverlayAlignment.value());
    OverlayMargin.assign(style->OverlayMargin.value());
    OverlayOpacity.assign(style->OverlayOpacity.value());
    HitPadding.assign(style->HitPadding.value());
    HitInsets.assign(style->HitInsets.value());
    if (label)
        label->Color.assign(style->TextColor.value());
    SetOverlay(style->overlayOff, style->overlayOn);
    SetSize(style->DefaultSize());
    Invalidate();
}

void Button::SetText(const std::string& text)
{
    if (!label)
        return;
    label->String.assign(text);
    LayOutText();
}

void Button::SetOverlay(const Bitmap* off, const Bitmap* on)
{
    overlayOff = off;
    overlayOn = on;
    Invalidate();
}

int Button::GetAlphaAt(Point point) const
{
    if (RectangularHit.value() || !style || !style->pictures.normal) {
        const Rect& insets = HitInsets.value();
        const Rect grown = clientRect.Inset(-HitPadding.value());
        const Rect area{grown.left + insets.left, grown.top + insets.top, grown.right - insets.right,
                        grown.bottom - insets.bottom};
        return area.Contains(point) ? 255 : 0;
    }
    const Bitmap& picture = *style->pictures.normal;
    return picture.GetPixel(point - (clientRect.Middle() - picture.GetLogicalSize() * 0.5f)).a;
}

bool Button::IsInHitArea(Point point) const { return clientRect.Contains(point) && GetAlphaAt(point) > 0; }

void Button::SetVisualState(VisualState newState)
{
    if (newState == VisualState::Down) {
        // The pressed look comes at once, and at the release the button is lit.
        rollover.SetState(true);
        rollover.Finish();
    } else {
        rollover.SetState(newState == VisualState::Hover || Highlighted.value());
    }
    if (newState == visualState)
        return;
    visualState = newState;
    Invalidate();
}

void Button::MouseEntered()
{
    if (!pressed)
        SetVisualState(VisualState::Hover);
    RolloverValueControl::MouseEntered();
}

void Button::MouseLeft()
{
    if (!pressed)
        SetVisualState(VisualState::Normal);
    RolloverValueControl::MouseLeft();
}

void Button::MouseDown(int pressedButton, Point point, int inputFlags)
{
    if (TakePress(pressedButton, point, inputFlags) && IsInside(point))
        Press(point, inputFlags);
}

void Button::Press(Point point, int inputFlags)
{
    pressed = true;
    SetVisualState(VisualState::Down);
    if (Toggles.value() && HoldToToggle.value() && !On.value()) {
        holding = true;
        holdTimer->restart();
        On.assign(true);
    } else if (OpensPopup()) {
        OpenPopup(point, inputFlags);
    }
}

void Button::OpenPopup(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    ReleaseKnowingly([this] {
        if (RootControl* root = GetRoot())
            root->SetCapture(nullptr);
    });
    if (guard.IsAlive())
        ShowPopup();
    if (!guard.IsAlive())
        return;
    // The release went to the popup. Here it comes after the choice, which so is part of the gesture.
    MouseUp(MouseButton::left, point, inputFlags);
    if (guard.IsAlive() && !IsHovered())
        SetVisualState(VisualState::Normal);
}

void Button::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    RolloverValueControl::MouseMoved(point, inputFlags);
    if (!guard.IsAlive() || !pressed || Behavior.value() == ButtonStyle::KeepsPressed)
        return;
    SetVisualState(IsInHitArea(point) ? VisualState::Down : VisualState::Normal);
}

void Button::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    if (releasedButton == MouseButton::left && pressed)
        Release(point);
    if (guard.IsAlive())
        RolloverValueControl::MouseUp(releasedButton, point, inputFlags);
}

void Button::Release(Point point)
{
    const ComponentGuard guard(*this);
    pressed = false;
    const bool wasHolding = std::exchange(holding, false);
    const bool inside = IsInside(point);
    SetVisualState(inside ? VisualState::Hover : VisualState::Normal);
    if (wasHolding) {
        if (On.value() && holdTimer->elapsedMs() >= longPressMs)
            On.assign(false);
    } else if (inside && Toggles.value()) {
        On.assign(!On.value());
    }
}

void Button::Resized()
{
    LayOutText();
    RolloverValueControl::Resized();
}

void Button::propertyChanged(AbstractProperty& property)
{
    RolloverValueControl::propertyChanged(property);
    if (&property == &On) {
        Invalidate();
        OnStateChanged();
    } else if (&property == &LineCount || &property == &TextMargin || &property == &TextOffset ||
               &property == &OverlayMargin || &property == &OverlayAlignment) {
        LayOutText();
        Invalidate();
    } else if (&property == &Background || &property == &Corner || &property == &TextAlignment ||
               &property == &TextOpacity || &property == &OverlayMode || &property == &OverlayOpacity ||
               &property == &OverlaySource) {
        Invalidate();
    }
}

}  // namespace gui
