#include "gallery/Pose.h"

#include "gallery/OffscreenPlatform.h"
#include "gui/UserInterface.h"

namespace gallery {

Pose::Pose(gui::UserInterface& ui, gui::Control* parent, Maker controlMaker, Hand posedHand,
           gui::Point handAt)
    : Control(ui, parent),
      maker(std::move(controlMaker)),
      hand(posedHand),
      handPosition(handAt),
      picture(ui.Backing())
{
    Enabled.assign(false);
    Take();
}

void Pose::Take()
{
    taken = true;
    const auto stage = OffscreenPlatform::Open({512.0f, 512.0f}, userInterface.Backing().Scale());
    gui::RootControl& root = stage->GetRootControl();
    const gui::RootControl::Entry entry(root);
    const auto control = maker(*stage, &root);
    control->SetPosition({});
    SetSize(control->GetSize());
    if (hand != Hand::Away)
        root.WindowMouseMove(handPosition, 0);
    if (hand == Hand::Pressing)
        root.WindowMouseDown(gui::MouseButton::left, handPosition, gui::InputFlags::leftButton);

    picture.SetSize(GetWidth(), GetHeight());
    gui::Canvas& canvas = picture.GetCanvas();
    const gui::Canvas::State saved = canvas.Save();
    canvas.Clip.assign(control->GetClientRect());
    control->PaintTree(canvas);
    canvas.Restore(saved);
    if (hand == Hand::Pressing)
        root.WindowMouseUp(gui::MouseButton::left, {-32.0f, -32.0f}, 0);
}

void Pose::PaintContent(gui::Canvas& canvas)
{
    if (!taken)
        Take();
    canvas.DrawBitmapAt(picture, {});
}

void Pose::BackingScaleChanged()
{
    taken = false;  // the pictures of the style may follow later than this
    Control::BackingScaleChanged();
}

}  // namespace gallery
