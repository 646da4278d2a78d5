#pragma once

#include "gui/AnimatedControl.h"

#include <memory>
#include <vector>

namespace gui {

/// A layer over the interface that dims all but chosen controls and takes all input. It is made with `new`
/// and gives itself to the interface when it is shown: it is deleted once it has closed. Thread: main.
class Overlay : public AnimatedControl {
public:
    enum class CutOutMode {
        Shaped = 0,  // hit where it catches the mouse
        Lifted = 1,  // hit within its rectangle
        NeverHit = 2,
    };

    /// A thing on the overlay that is no control.
    class VirtualGhostControl {
    public:
        virtual ~VirtualGhostControl() = default;
        virtual gui::Rect Rect() const = 0;  // of the root's
        virtual Point Center() const { return Rect().Middle(); }
        virtual void AddParameters(std::vector<int>& parameters) const;
        virtual int GetParameter() const { return -1; }
        virtual bool HitTest(Point point) const { return Rect().Contains(point); }
        virtual bool Enabled() const { return true; }
        /// The origin is at the top left of its rectangle.
        virtual void Paint(Canvas&) {}
    };

    Overlay(UserInterface& ui, Animator* controlAnimator);
    ~Overlay() override;

    Property<Color> DimColor{Color::Black().WithAlpha(0x80), this};
    Property<int> FadeTime{200, this};  // milliseconds
    NotifyEvent OnClosed;               // just before it is deleted

    /// Lies down on top of the children of `parent`, over its whole size.
    virtual void Show(Control& parent);
    /// Fades, where there is an animator, and is gone soon after. The mouse passes at once.
    virtual void Close();

    void AddCutOut(Control& control, CutOutMode mode);
    void AddGhost(std::unique_ptr<VirtualGhostControl> ghost);

    // Items are the cut-outs in the order of their adding, then the ghosts. A cut-out keeps its index when
    // its control dies.
    /// The item on top at a point of the overlay's, or -1.
    virtual int HitItem(Point point) const;
    /// Where a mark for an item goes, in the root's coordinates. Controls in one another, as the rings of a
    /// double knob, get theirs in what the inner one leaves free.
    Point ItemCenter(int index) const;
    /// The visible part of an item, in the root's coordinates; empty if there is none.
    gui::Rect ItemRect(int index) const;
    Control* CutOut(int index) const;             // null for a ghost or when it is gone
    VirtualGhostControl* Ghost(int index) const;  // null for a cut-out
    int ItemCount() const { return static_cast<int>(cutOuts.size() + ghosts.size()); }

    void propertyChanged(AbstractProperty& property) override;
    void LinkedComponentDeleted(Component& component) override;
    void PostedUpdate(std::intptr_t first, std::intptr_t second) override;
    void ChildChanged(Control& control, Change change) override;
    void PaintContent(Canvas& canvas) override;

protected:
    /// Sees each press before all controls; false swallows it.
    virtual bool FilterPress(int pressedButton, Point point, int inputFlags);

private:
    enum class ItemKind { Control = 0, Ghost = 1 };
    struct OrderedItem {
        int index;
        ItemKind kind;
    };

    bool IsHit(const OrderedItem& item, Point point) const;
    int ItemIndex(const OrderedItem& item) const;
    void PaintItem(Canvas& canvas, const OrderedItem& item) const;
    bool CoversGhost(std::size_t place) const;
    void RemoveFilter();

    std::vector<Control*> cutOuts;
    std::vector<CutOutMode> cutOutModes;
    std::vector<std::unique_ptr<VirtualGhostControl>> ghosts;
    std::vector<OrderedItem> order;
    bool closing = false;
    bool filtering = false;
};

}  // namespace gui
