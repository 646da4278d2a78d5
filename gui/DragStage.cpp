#include "gui/DragStage.h"

#include "gui/RootControl.h"
#include "gui/Timer.h"
#include "gui/UserInterface.h"

namespace gui {

namespace {

constexpr int holdMs = 400;

}  // namespace

DragStage::DragStage(UserInterface& ui, Animator* controlAnimator)
    : Overlay(ui, controlAnimator), holdTimer(ui.CreateTimer())
{
    holdTimer->Interval.assign(holdMs);
    holdTimer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) {
        holdTimer->Running.assign(false);
        if (Control* held = CutOut(hoverIndex))
            held->OtherClicked(DragNotice::held);
    }));
}

DragStage::~DragStage() { UnlinkFromAll(); }

void DragStage::StartDrag(Control& dragSource, std::unique_ptr<DragObject> dragObject)
{
    RootControl& root = userInterface.GetRootControl();
    const ComponentGuard self(*this);
    object = std::move(dragObject);
    source = &dragSource;
    LinkTo(dragSource);
    activeFlag = true;
    BuildContent();
    HitThreshold.assign(0);
    Show(root);
    const Point point = FromRoot(root.LastPosition());
    dragSource.HandOverMouse(*this, point, point, root.LastFlags());
    if (self.IsAlive() && activeFlag && hoverIndex == -1)
        HoverAt(point, DragPhase::Start);
}

void DragStage::DragTo(DragPhase phase, Point)
{
    if (phase == DragPhase::Move)
        return;
    const ComponentGuard self(*this);
    holdTimer->Running.assign(false);
    if (phase != DragPhase::Leave && hoverIndex != -1)
        holdTimer->Running.assign(true);
    Control* const item = CutOut(hoverIndex);
    if (item && Visible.value())
        item->OtherClicked(phase == DragPhase::Leave ? DragNotice::left : DragNotice::entered);
    if (self.IsAlive())
        Invalidate(ItemRect(hoverIndex).Translated(FromRoot({})));
}

void DragStage::HoverAt(Point point, DragPhase enterPhase)
{
    const ComponentGuard self(*this);
    const int index = HitItem(point);
    if (index == hoverIndex)
        return DragTo(DragPhase::Move, point);
    if (hoverIndex != -1)
        DragTo(DragPhase::Leave, point);
    if (!self.IsAlive() || !activeFlag)
        return;
    hoverIndex = index;
    if (hoverIndex != -1)
        DragTo(enterPhase, point);
}

void DragStage::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    Overlay::MouseMoved(point, inputFlags);
    if (self.IsAlive() && activeFlag)
        HoverAt(point, DragPhase::Enter);
}

void DragStage::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    clickState = ClickState::None;  // the end of a drag is no click
    Overlay::MouseUp(releasedButton, point, inputFlags);
    if (!self.IsAlive() || !activeFlag || releasedButton != MouseButton::left)
        return;
    HoverAt(point, DragPhase::Enter);
    if (self.IsAlive() && activeFlag && hoverIndex != -1)
        DragTo(DragPhase::Leave, point);
    if (!self.IsAlive() || !activeFlag)
        return;
    activeFlag = false;
    Drop();
}

void DragStage::CaptureReleased()
{
    const ComponentGuard self(*this);
    Overlay::CaptureReleased();
    // Taken away while the button is still held: there is nowhere to drop.
    if (self.IsAlive() && activeFlag && userInterface.GetRootControl().IsLeftDown())
        Close();
}

void DragStage::Close()
{
    const ComponentGuard self(*this);
    const bool wasActive = std::exchange(activeFlag, false);
    if (wasActive && hoverIndex != -1)
        DragTo(DragPhase::Leave, FromRoot(userInterface.GetRootControl().LastPosition()));
    if (!self.IsAlive())
        return;
    holdTimer->Running.assign(false);
    Overlay::Close();
}

void DragStage::LinkedComponentDeleted(Component& component)
{
    Overlay::LinkedComponentDeleted(component);
    if (&component != source)
        return;
    source = nullptr;
    if (activeFlag)
        Close();
}

}  // namespace gui
