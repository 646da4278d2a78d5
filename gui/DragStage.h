#pragma once

#include "gui/Overlay.h"

#include <memory>

namespace gui {

class Timer;

/// What a drag carries.
class DragObject {
public:
    virtual ~DragObject() = default;
};

/// An overlay that carries a drag from one control over others. A control that takes part hears of it through
/// `OtherClicked`. Thread: main.
class DragStage : public Overlay {
public:
    enum class DragPhase {
        Enter = 0,
        Leave = 1,
        Start = 2,  // enters what lies under the start of the drag
        Move = 3,
    };
    /// What `OtherClicked` of a cut-out is told.
    struct DragNotice {
        static constexpr int left = 0;
        static constexpr int entered = 1;
        static constexpr int held = 2;  // the mouse stayed for 400 ms
    };

    DragStage(UserInterface& ui, Animator* controlAnimator);
    ~DragStage() override;

    void Close() override;
    /// Shows the stage and takes the mouse over from `dragSource`, whose press is cancelled.
    virtual void StartDrag(Control& dragSource, std::unique_ptr<DragObject> dragObject);
    /// Something happens between the mouse and the item at `HoverIndex`.
    virtual void DragTo(DragPhase phase, Point point);
    /// The mouse was released over the item at `HoverIndex`. The default closes the stage.
    virtual void Drop() { Close(); }
    /// The place to add the cut-outs and ghosts of a drag.
    virtual void BuildContent() {}

    bool IsActive() const { return activeFlag; }
    int HoverIndex() const { return hoverIndex; }
    Control* Source() const { return source; }  // null when it is gone

    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    void CaptureReleased() override;
    void LinkedComponentDeleted(Component& component) override;

private:
    void HoverAt(Point point, DragPhase enterPhase);

    std::unique_ptr<DragObject> object;
    Control* source = nullptr;
    int hoverIndex = -1;
    std::unique_ptr<Timer> holdTimer;
    bool activeFlag = false;
};

}  // namespace gui
