#include "gui/Overlay.h"

#include "gui/FadeAnimation.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

#include <algorithm>

namespace gui {

namespace {

/// Takes `hole` out of rectangles that don't overlap; up to four remain of each.
std::vector<Rect> WithoutHole(const std::vector<Rect>& rects, const Rect& hole)
{
    std::vector<Rect> rest;
    const auto add = [&](const Rect& rect) {
        if (!rect.IsEmpty())
            rest.push_back(rect);
    };
    for (const Rect& rect : rects) {
        const Rect common = rect.Intersected(hole);
        if (common.IsEmpty()) {
            add(rect);
            continue;
        }
        add({rect.left, rect.top, rect.right, common.top});
        add({rect.left, common.bottom, rect.right, rect.bottom});
        add({rect.left, common.top, common.left, common.bottom});
        add({common.right, common.top, rect.right, common.bottom});
    }
    return rest;
}

Rect VisibleRect(const Control& control)
{
    Rect rect = control.GetClientRect();
    for (const Control* level = &control; level; level = level->Parent.value()) {
        rect = rect.Intersected(level->GetClientRect());
        if (level->Parent.value())
            rect = rect.Translated(level->GetPosition());
    }
    return rect;
}

bool ContainsRect(const Rect& outer, const Rect& inner) { return IsSameRect(outer.United(inner), outer); }

}  // namespace

void Overlay::VirtualGhostControl::AddParameters(std::vector<int>& parameters) const
{
    if (const int parameter = GetParameter(); parameter != -1)
        parameters.push_back(parameter);
}

Overlay::Overlay(UserInterface& ui, Animator* controlAnimator) : AnimatedControl(ui, nullptr, controlAnimator)
{
    Anchors.assign(Anchor::left | Anchor::top | Anchor::right | Anchor::bottom);
}

Overlay::~Overlay()
{
    RemoveFilter();
    UnlinkFromAll();
}

void Overlay::Show(Control& parent)
{
    DeleteWithInterface();
    Parent.assign(&parent);
    parent.SetChildIndex(*this, static_cast<int>(parent.Children().size()) - 1);
    SetBounds(parent.GetClientRect());
    Opacity.assign(255);
    Visible.assign(true);
    filtering = true;
    userInterface.SetMouseFilter([this](int pressedButton, Point point, int inputFlags) {
        return FilterPress(pressedButton, point, inputFlags);
    });
}

bool Overlay::FilterPress(int, Point, int)
{
    // The press comes here even if a control below still holds the wheel.
    RootControl* root = GetRoot();
    if (root && root->CapturedControl() && root->CapturedControl() != this)
        root->SetCapture(nullptr);
    return true;
}

void Overlay::RemoveFilter()
{
    if (filtering)
        userInterface.SetMouseFilter({});
    filtering = false;
}

void Overlay::Close()
{
    if (closing)
        return;
    const ComponentGuard self(*this);
    closing = true;
    RemoveFilter();
    Enabled.assign(false);
    if (!self.IsAlive())
        return;
    if (RootControl* root = GetRoot(); root && root->CapturedControl() == this)
        root->SetCapture(nullptr);
    if (!self.IsAlive())
        return;
    const auto finish = [this] { userInterface.PostUpdate(*this, 0, 0, EventQueue::mainQueue); };
    Animator* const fader = GetAnimator();
    if (!fader) {
        Visible.assign(false);
        return finish();
    }
    auto& fade = fader->Start<FadeAnimation>(this, AnimationKey(&Opacity), *this, 0);
    fade.Duration.assign(FadeTime.value());
    fade.OnFinished.setHandler(NotifyEvent::handler([finish](void*) { finish(); }));
}

void Overlay::PostedUpdate(std::intptr_t, std::intptr_t)
{
    const ComponentGuard self(*this);
    OnClosed.fire(this);
    if (self.IsAlive())
        delete this;
}

// Items

void Overlay::AddCutOut(Control& control, CutOutMode mode)
{
    order.push_back({static_cast<int>(cutOuts.size()), ItemKind::Control});
    cutOuts.push_back(&control);
    cutOutModes.push_back(mode);
    control.AddChangeListener(*this);
    Invalidate();
}

void Overlay::AddGhost(std::unique_ptr<VirtualGhostControl> ghost)
{
    order.push_back({static_cast<int>(ghosts.size()), ItemKind::Ghost});
    ghosts.push_back(std::move(ghost));
    Invalidate();
}

void Overlay::LinkedComponentDeleted(Component& component)
{
    AnimatedControl::LinkedComponentDeleted(component);
    std::replace_if(
        cutOuts.begin(), cutOuts.end(), [&](Component* cutOut) { return cutOut == &component; }, nullptr);
    Invalidate();
}

void Overlay::ChildChanged(Control& control, Change change)
{
    AnimatedControl::ChildChanged(control, change);
    if (std::find(cutOuts.begin(), cutOuts.end(), &control) != cutOuts.end())
        Invalidate();
}

void Overlay::propertyChanged(AbstractProperty& property)
{
    AnimatedControl::propertyChanged(property);
    if (&property == &DimColor)
        Invalidate();
}

Control* Overlay::CutOut(int index) const
{
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < cutOuts.size() ? cutOuts[place] : nullptr;
}

Overlay::VirtualGhostControl* Overlay::Ghost(int index) const
{
    const auto place = static_cast<std::size_t>(index) - cutOuts.size();
    return index >= 0 && place < ghosts.size() ? ghosts[place].get() : nullptr;
}

int Overlay::ItemIndex(const OrderedItem& item) const
{
    return item.kind == ItemKind::Control ? item.index : item.index + static_cast<int>(cutOuts.size());
}

Rect Overlay::ItemRect(int index) const
{
    if (const VirtualGhostControl* ghost = Ghost(index))
        return ghost->Enabled() ? ghost->Rect() : gui::Rect{};
    const Control* control = CutOut(index);
    return control && control->IsShown() ? VisibleRect(*control) : gui::Rect{};
}

bool Overlay::IsHit(const OrderedItem& item, Point point) const
{
    const Point rootPoint = ToRoot(point);
    if (item.kind == ItemKind::Ghost) {
        const VirtualGhostControl& ghost = *ghosts[static_cast<std::size_t>(item.index)];
        return ghost.Enabled() && ghost.HitTest(rootPoint);
    }
    const Control* control = CutOut(item.index);
    const CutOutMode mode = cutOutModes[static_cast<std::size_t>(item.index)];
    if (!control || mode == CutOutMode::NeverHit)
        return false;
    const Point own = control->FromRoot(rootPoint);
    return control->IsPointShown(own) && (mode == CutOutMode::Lifted || control->CatchesMouse(own));
}

int Overlay::HitItem(Point point) const
{
    const auto found = std::find_if(order.rbegin(), order.rend(),
                                    [&](const OrderedItem& item) { return IsHit(item, point); });
    return found != order.rend() ? ItemIndex(*found) : -1;
}

Point Overlay::ItemCenter(int index) const
{
    if (const VirtualGhostControl* ghost = Ghost(index))
        return ghost->Center();
    const Control* control = CutOut(index);
    if (!control)
        return {};
    Point center = control->ToRoot(control->GetClientRect().Middle());
    for (int next = index + 1; next <= index + 2; ++next) {
        const Control* inner = CutOut(next);
        if (!inner || inner->Parent.value() != control->Parent.value() ||
            !ContainsRect(control->GetBounds(), inner->GetBounds()))
            continue;
        // Between the rims: a quarter of both heights is the middle of both radii.
        center.y += (control->GetHeight() + inner->GetHeight()) * 0.25f - 1.0f;
        break;
    }
    return center;
}

// Painting

void Overlay::PaintContent(Canvas& canvas)
{
    std::vector<gui::Rect> dimmed{GetClientRect().Intersected(canvas.Clip.value())};
    for (const OrderedItem& item : order) {
        if (item.kind == ItemKind::Control)
            dimmed = WithoutHole(dimmed, ItemRect(item.index).Translated(FromRoot({})));
    }
    for (const gui::Rect& rect : dimmed)
        canvas.FillRect(rect, DimColor.value());
    // A cut-out shows in its hole as it is. Painting it again would double what is translucent in it, and is
    // only needed above a ghost.
    for (std::size_t place = 0; place < order.size(); ++place) {
        if (order[place].kind == ItemKind::Ghost || CoversGhost(place))
            PaintItem(canvas, order[place]);
    }
}

bool Overlay::CoversGhost(std::size_t place) const
{
    const gui::Rect rect = ItemRect(ItemIndex(order[place]));
    return std::any_of(
        order.begin(), order.begin() + static_cast<std::ptrdiff_t>(place), [&](const auto& below) {
            return below.kind == ItemKind::Ghost && !ItemRect(ItemIndex(below)).Intersected(rect).IsEmpty();
        });
}

void Overlay::PaintItem(Canvas& canvas, const OrderedItem& item) const
{
    const int index = ItemIndex(item);
    const gui::Rect rect = ItemRect(index).Translated(FromRoot({}));
    const Canvas::State saved = canvas.Save();
    const gui::Rect clip = saved.clip.Intersected(rect);
    if (clip.IsEmpty())
        return;
    Control* const control = CutOut(index);
    const Point origin = control ? FromRoot(control->ToRoot({})) : rect.Origin();
    canvas.Restore({clip.Translated(Point{} - origin), saved.alpha, saved.origin + origin});
    if (control)
        control->PaintTree(canvas);
    else
        Ghost(index)->Paint(canvas);
    canvas.Restore(saved);
}

}  // namespace gui
